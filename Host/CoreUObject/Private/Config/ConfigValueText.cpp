#include "Config/ConfigValueText.h"

#include <charconv>
#include <string>

namespace
{
bool IsControl(TCHAR Char)
{
    return Char < 0x20 || Char == 0x7F;
}

bool IsBlank(TCHAR Char)
{
    return Char == u' ' || Char == u'\t';
}

bool NeedsQuotes(const FString& Value)
{
    if (Value.IsEmpty())
    {
        return false;
    }
    if (IsBlank(Value[0]) || IsBlank(Value[Value.Len() - 1]) || Value[0] == u'"')
    {
        return true;
    }
    for (const TCHAR Char : Value.View())
    {
        if (IsControl(Char) && Char != u'\t')
        {
            return true;
        }
    }
    return false;
}

void AppendEscaped(FString& Out, TCHAR Char)
{
    switch (Char)
    {
    case u'"':
        Out += TEXT("\\\"");
        return;
    case u'\\':
        Out += TEXT("\\\\");
        return;
    case u'\n':
        Out += TEXT("\\n");
        return;
    case u'\r':
        Out += TEXT("\\r");
        return;
    case u'\t':
        Out += TEXT("\\t");
        return;
    default:
        break;
    }
    if (IsControl(Char))
    {
        Out += FString::Printf(TEXT("\\u%04X"), static_cast<unsigned>(Char));
        return;
    }
    Out.AppendChar(Char);
}

int32 HexDigit(TCHAR Char)
{
    if (Char >= u'0' && Char <= u'9')
    {
        return Char - u'0';
    }
    const TCHAR Upper = ToUpperAscii(Char);
    return (Upper >= u'A' && Upper <= u'F') ? Upper - u'A' + 10 : INDEX_NONE;
}

// Reads the escape at Text[Index] (just after the backslash) into Out and returns
// the index after it. Unknown escapes stay as written.
int32 ReadEscape(const FString& Text, int32 Index, FString& Out)
{
    switch (Text[Index])
    {
    case u'n':
        Out.AppendChar(u'\n');
        return Index + 1;
    case u'r':
        Out.AppendChar(u'\r');
        return Index + 1;
    case u't':
        Out.AppendChar(u'\t');
        return Index + 1;
    case u'"':
    case u'\\':
        Out.AppendChar(Text[Index]);
        return Index + 1;
    default:
        break;
    }
    if (Text[Index] == u'u' && Index + 4 < Text.Len())
    {
        int32 Unit = 0;
        for (int32 Digit = 1; Digit <= 4 && Unit >= 0; ++Digit)
        {
            const int32 Value = HexDigit(Text[Index + Digit]);
            Unit = Value < 0 ? INDEX_NONE : Unit * 16 + Value;
        }
        if (Unit >= 0)
        {
            Out.AppendChar(static_cast<TCHAR>(Unit));
            return Index + 5;
        }
    }
    Out.AppendChar(u'\\');
    return Index;
}

template <typename NumberType> bool ParseNumber(const FString& Text, NumberType& OutValue)
{
    const std::string Ascii = Text.ToUTF8();
    // from_chars takes no '+', which people write in hand-edited files.
    const SIZE_T Start = (Ascii.size() > 1 && Ascii[0] == '+' && Ascii[1] != '-') ? 1 : 0;
    NumberType Parsed{};
    const char* const End = Ascii.data() + Ascii.size();
    const std::from_chars_result Result = std::from_chars(Ascii.data() + Start, End, Parsed);
    if (Result.ec != std::errc() || Result.ptr != End)
    {
        return false;
    }
    OutValue = Parsed;
    return true;
}

// Shortest text that reads back as the same value, with ".0" on whole numbers so
// that the file shows a decimal.
template <typename NumberType> FString FormatFloating(NumberType Value)
{
    char Buffer[64];
    const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    std::string Text(Buffer, Result.ptr);
    if (Text.find_first_of(".enai") == std::string::npos)
    {
        Text += ".0";
    }
    return FString::FromUTF8(Text);
}
} // namespace

bool ConfigValueText::ParseInt64(const FString& Text, int64& OutValue)
{
    return ParseNumber(Text, OutValue);
}

bool ConfigValueText::ParseInt32(const FString& Text, int32& OutValue)
{
    return ParseNumber(Text, OutValue);
}

bool ConfigValueText::ParseDouble(const FString& Text, double& OutValue)
{
    return ParseNumber(Text, OutValue);
}

bool ConfigValueText::ParseFloat(const FString& Text, float& OutValue)
{
    return ParseNumber(Text, OutValue);
}

bool ConfigValueText::ParseBool(const FString& Text, bool& OutValue)
{
    for (const TCHAR* TrueText : {TEXT("True"), TEXT("Yes"), TEXT("On"), TEXT("1")})
    {
        if (Text == TrueText)
        {
            OutValue = true;
            return true;
        }
    }
    for (const TCHAR* FalseText : {TEXT("False"), TEXT("No"), TEXT("Off"), TEXT("0")})
    {
        if (Text == FalseText)
        {
            OutValue = false;
            return true;
        }
    }
    return false;
}

FString ConfigValueText::FormatInt64(int64 Value)
{
    char Buffer[32];
    const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    return FString::FromUTF8(std::string_view(Buffer, static_cast<SIZE_T>(Result.ptr - Buffer)));
}

FString ConfigValueText::FormatDouble(double Value)
{
    return FormatFloating(Value);
}

FString ConfigValueText::FormatFloat(float Value)
{
    return FormatFloating(Value);
}

FString ConfigValueText::FormatBool(bool bValue)
{
    return bValue ? FString(TEXT("True")) : FString(TEXT("False"));
}

FString ConfigValueText::QuoteIfNeeded(const FString& Value)
{
    if (!NeedsQuotes(Value))
    {
        return Value;
    }
    FString Quoted(TEXT("\""));
    for (const TCHAR Char : Value.View())
    {
        AppendEscaped(Quoted, Char);
    }
    Quoted.AppendChar(u'"');
    return Quoted;
}

bool ConfigValueText::Unquote(const FString& Text, FString& OutValue)
{
    if (Text.IsEmpty() || Text[0] != u'"')
    {
        OutValue = Text;
        return true;
    }
    FString Value;
    int32 Index = 1;
    while (Index < Text.Len())
    {
        const TCHAR Char = Text[Index++];
        if (Char == u'"')
        {
            if (Index != Text.Len())
            {
                return false;
            }
            OutValue = std::move(Value);
            return true;
        }
        if (Char == u'\\' && Index < Text.Len())
        {
            Index = ReadEscape(Text, Index, Value);
            continue;
        }
        Value.AppendChar(Char);
    }
    return false;
}
