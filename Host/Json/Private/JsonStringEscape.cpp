#include "Serialization/JsonStringEscape.h"

#include <charconv>
#include <cmath>

void AppendEscapedJsonString(FString& Out, const FString& Text)
{
    static constexpr TCHAR Hex[] = u"0123456789abcdef";
    Out.AppendChar(u'"');
    for (const TCHAR Unit : Text.View())
    {
        switch (Unit)
        {
        case u'\\':
            Out.Append(TEXT("\\\\"));
            break;
        case u'"':
            Out.Append(TEXT("\\\""));
            break;
        case u'\b':
            Out.Append(TEXT("\\b"));
            break;
        case u'\f':
            Out.Append(TEXT("\\f"));
            break;
        case u'\n':
            Out.Append(TEXT("\\n"));
            break;
        case u'\r':
            Out.Append(TEXT("\\r"));
            break;
        case u'\t':
            Out.Append(TEXT("\\t"));
            break;
        default:
            if (Unit < 0x20)
            {
                const TCHAR Escape[] = {u'\\', u'u', u'0', u'0', Hex[Unit >> 4], Hex[Unit & 0xF]};
                Out.Append(Escape, 6);
            }
            else
            {
                Out.AppendChar(Unit);
            }
        }
    }
    Out.AppendChar(u'"');
}

void AppendJsonNumber(FString& Out, double Value)
{
    if (!std::isfinite(Value))
    {
        Out.Append(TEXT("null"));
        return;
    }
    char Buffer[32];
    const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    for (const char* Char = Buffer; Char != Result.ptr; ++Char)
    {
        Out.AppendChar(static_cast<TCHAR>(*Char));
    }
}
