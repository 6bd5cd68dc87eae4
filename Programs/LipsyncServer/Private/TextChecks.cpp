#include "TextChecks.h"

#include <algorithm>
#include <charconv>
#include <cctype>
#include <cmath>
#include <cstdint>

namespace
{
char Lower(char Character)
{
    return (Character >= 'A' && Character <= 'Z') ? char(Character - 'A' + 'a') : Character;
}

template <typename T> bool ParseWhole(std::string_view Text, T& Out)
{
    // from_chars takes no leading '+' or spaces, which is the strictness wanted.
    const char* End = Text.data() + Text.size();
    const auto Result = std::from_chars(Text.data(), End, Out);
    return !Text.empty() && Result.ec == std::errc() && Result.ptr == End;
}
} // namespace

bool EqualsNoCase(std::string_view Left, std::string_view Right)
{
    return std::equal(Left.begin(), Left.end(), Right.begin(), Right.end(),
                      [](char A, char B) { return Lower(A) == Lower(B); });
}

bool IsHexDigits(std::string_view Text, std::size_t Count)
{
    return Text.size() == Count &&
           std::all_of(Text.begin(), Text.end(),
                       [](char C) { return std::isxdigit(static_cast<unsigned char>(C)); });
}

bool ParseInt32(std::string_view Text, int& Out)
{
    std::int32_t Value = 0;
    if (!ParseWhole(Text, Value))
    {
        return false;
    }
    Out = Value;
    return true;
}

bool IsDecimalInteger(std::string_view Text)
{
    std::int64_t Value = 0;
    return ParseWhole(Text, Value);
}

bool IsDecimalNumber(std::string_view Text)
{
    double Value = 0.0;
    return ParseWhole(Text, Value) && std::isfinite(Value);
}
