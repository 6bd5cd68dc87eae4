#include "MarkupText.h"

#include "CoreMinimal.h"

std::string EscapeMarkup(const std::string& Text)
{
    // The round trip through host text replaces bytes that are not UTF-8.
    const std::string Utf8 = FString::FromUTF8(Text).ToUTF8();
    std::string Out;
    for (const char Char : Utf8)
    {
        switch (Char)
        {
        case '&':
            Out += "&amp;";
            break;
        case '<':
            Out += "&lt;";
            break;
        case '>':
            Out += "&gt;";
            break;
        case '"':
            Out += "&quot;";
            break;
        default:
            // XML has no way to write the other control characters.
            Out += static_cast<unsigned char>(Char) < 0x20 ? ' ' : Char;
        }
    }
    return Out;
}
