#include "JsonText.h"

#include <charconv>
#include <cmath>

void AppendInteger(std::string& Out, std::int64_t Value)
{
    char Buffer[24];
    const auto Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    Out.append(Buffer, Result.ptr);
}

void AppendWeight(std::string& Out, double Value)
{
    constexpr double Scale = 10000.0;
    double Rounded = std::isfinite(Value) ? std::round(Value * Scale) / Scale : 0.0;
    // Adding zero turns -0 into 0, so a weight never reads "-0".
    Rounded += 0.0;
    char Buffer[48];
    const auto Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Rounded, std::chars_format::fixed);
    if (Result.ec != std::errc())
    {
        Out += '0';
        return;
    }
    Out.append(Buffer, Result.ptr);
}

void AppendJsonString(std::string& Out, std::string_view Text)
{
    static constexpr char Hex[] = "0123456789abcdef";
    Out += '"';
    for (const char Character : Text)
    {
        const auto Code = static_cast<unsigned char>(Character);
        if (Character == '"' || Character == '\\')
        {
            Out += '\\';
            Out += Character;
        }
        else if (Code < 0x20)
        {
            Out += "\\u00";
            Out += Hex[Code >> 4];
            Out += Hex[Code & 0xF];
        }
        else
        {
            Out += Character;
        }
    }
    Out += '"';
}
