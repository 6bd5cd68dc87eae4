#include "JsonNumberConversion.h"

#include "JsonThreadParser.h"

#include <string>

namespace
{
bool IsDigit(char16_t Unit)
{
    return Unit >= u'0' && Unit <= u'9';
}

// Numbers longer than this are copied to the heap; real ones fit on the stack.
constexpr size_t StackTextLength = 64;
} // namespace

bool ParseJsonNumberText(std::u16string_view Text, double& OutNumber)
{
    // A JSON number starts with '-' or a digit and ends with a digit. That rules out
    // surrounding whitespace and every other kind of value (a string, a literal, a
    // container) before the parser runs, so a successful parse is one number.
    if (Text.empty() || !(Text.front() == u'-' || IsDigit(Text.front())) || !IsDigit(Text.back()))
    {
        return false;
    }
    char StackBuffer[StackTextLength + simdjson::SIMDJSON_PADDING] = {};
    std::string HeapBuffer;
    char* Ascii = StackBuffer;
    if (Text.size() > StackTextLength)
    {
        HeapBuffer.assign(Text.size() + simdjson::SIMDJSON_PADDING, '\0');
        Ascii = HeapBuffer.data();
    }
    for (size_t Index = 0; Index < Text.size(); ++Index)
    {
        if (Text[Index] >= 0x80)
        {
            return false;
        }
        Ascii[Index] = static_cast<char>(Text[Index]);
    }

    simdjson::dom::element Root;
    double Number = 0.0;
    const bool bNumber = !FJsonThreadParser::Get().parse(Ascii, Text.size(), false).get(Root) &&
                         !Root.get_double().get(Number);
    if (bNumber)
    {
        OutNumber = Number;
    }
    FJsonThreadParser::Trim();
    return bNumber;
}
