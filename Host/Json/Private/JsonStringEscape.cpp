#include "Serialization/JsonStringEscape.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace
{
// Both text forms escape alike: every unit that needs it is ASCII, and UTF-8
// continuation bytes are all 0x80 or above.
template <typename UnitType> bool NeedsEscape(UnitType Unit)
{
    return static_cast<uint32>(Unit) < 0x20 || Unit == '"' || Unit == '\\';
}

void AppendText(std::string& Out, std::string_view Text)
{
    Out.append(Text);
}

void AppendText(FString& Out, std::u16string_view Text)
{
    Out.Append(Text);
}

void AppendAscii(std::string& Out, std::string_view Ascii)
{
    Out.append(Ascii);
}

// Escapes are at most six characters.
void AppendAscii(FString& Out, std::string_view Ascii)
{
    TCHAR Wide[8];
    const SIZE_T Count = std::min(Ascii.size(), std::size(Wide));
    std::copy_n(Ascii.begin(), Count, Wide);
    Out.Append(Wide, static_cast<int32>(Count));
}

template <typename StringType, typename UnitType> void AppendEscape(StringType& Out, UnitType Unit)
{
    static constexpr char Hex[] = "0123456789abcdef";
    switch (Unit)
    {
    case '\\':
        return AppendAscii(Out, "\\\\");
    case '"':
        return AppendAscii(Out, "\\\"");
    case '\b':
        return AppendAscii(Out, "\\b");
    case '\f':
        return AppendAscii(Out, "\\f");
    case '\n':
        return AppendAscii(Out, "\\n");
    case '\r':
        return AppendAscii(Out, "\\r");
    case '\t':
        return AppendAscii(Out, "\\t");
    default:
    {
        const char Escape[] = {'\\', 'u', '0', '0', Hex[Unit >> 4], Hex[Unit & 0xF]};
        return AppendAscii(Out, std::string_view(Escape, sizeof(Escape)));
    }
    }
}

// Most keys and values need no escape at all: clean runs are copied in one go.
template <typename StringType, typename UnitType>
void AppendQuoted(StringType& Out, std::basic_string_view<UnitType> Text)
{
    AppendAscii(Out, "\"");
    SIZE_T RunStart = 0;
    for (SIZE_T Index = 0; Index < Text.size(); ++Index)
    {
        if (NeedsEscape(Text[Index]))
        {
            AppendText(Out, Text.substr(RunStart, Index - RunStart));
            AppendEscape(Out, Text[Index]);
            RunStart = Index + 1;
        }
    }
    AppendText(Out, Text.substr(RunStart));
    AppendAscii(Out, "\"");
}
} // namespace

void AppendEscapedJsonString(FString& Out, const FString& Text)
{
    AppendQuoted(Out, Text.View());
}

void AppendEscapedJsonString(std::string& Out, std::string_view Utf8)
{
    AppendQuoted(Out, Utf8);
}

char* WriteJsonNumber(char* Out, double Value)
{
    if (!std::isfinite(Value))
    {
        return std::copy_n("null", 4, Out);
    }
    // The shortest form of a whole number from 2^63 on is bare digits, which a
    // reader takes for an integer too wide for 64 bits and refuses; an exponent
    // keeps it a double.
    if (std::abs(Value) >= 0x1p63)
    {
        return std::to_chars(Out, Out + MaxJsonNumberLength, Value, std::chars_format::scientific).ptr;
    }
    return std::to_chars(Out, Out + MaxJsonNumberLength, Value).ptr;
}

void AppendJsonNumber(FString& Out, double Value)
{
    char Ascii[MaxJsonNumberLength];
    char* End = WriteJsonNumber(Ascii, Value);
    TCHAR Wide[MaxJsonNumberLength];
    std::copy(Ascii, End, Wide);
    Out.Append(Wide, static_cast<int32>(End - Ascii));
}
