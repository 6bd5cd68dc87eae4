#include "JSON/FastJsonPlainNumbers.h"

#include <bit>
#include <cstring>

namespace
{
using CadrelJson::FastJson::FPlainNumberReader;

// Fifteen digits stay below 2^53, so they convert to a double exactly.
constexpr int32 MaxDigits = 15;

// Every power of ten up to 10^15 is exact in a double. Dividing one exact value by
// another rounds once, correctly, so the quotient is the double nearest to the
// decimal: the value any correct parser gives.
constexpr double PowersOfTen[MaxDigits + 1] = {1e0, 1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                               1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
constexpr uint64 PowersOfTenInt[] = {1, 10, 100, 1000, 10000, 100000, 1000000, 10000000, 100000000};

// The most bytes one number may read from its first: a sign, an eight-byte load
// of integer digits, a point, and two eight-byte loads of decimals.
constexpr ptrdiff_t NumberReach = 1 + 8 + 1 + 16;

constexpr uint64 EachByte(uint8 Byte)
{
    return 0x0101010101010101ull * Byte;
}

bool IsSpace(char Char)
{
    return Char == ' ' || Char == '\n' || Char == '\r' || Char == '\t';
}

const char* SkipSpace(const char* At, const char* End)
{
    while (At < End && IsSpace(*At))
    {
        ++At;
    }
    return At;
}

// The run of digits that starts at At, up to eight of them, read in one load:
// returns how many there are and adds their value to Mantissa, scaled to make
// room. Digit by digit, the loop over a weight's six decimals cost more than all
// the rest of its reading.
[[gnu::always_inline]] inline int32 ReadEightDigits(const char* At, FPlainNumberReader::FDigitRun& Run,
                                                    uint64& Mantissa)
{
    uint64 Bytes = 0;
    std::memcpy(&Bytes, At, sizeof(Bytes));
    // A byte is a digit when it is 0 to 9 once '0' is taken off. Bytes at and past
    // 0x80 get their top bit from the first term; the second sets it for 10 to 0x7F,
    // without carrying into the next byte.
    const uint64 Values = Bytes ^ EachByte('0');
    const uint64 NonDigits = (Values | ((Values & EachByte(0x7F)) + EachByte(0x80 - 10))) & EachByte(0x80);
    if (NonDigits != Run.NonDigits) [[unlikely]]
    {
        Run.NonDigits = NonDigits;
        Run.Count = NonDigits == 0 ? 8 : std::countr_zero(NonDigits) / 8;
        // The digits move to the top bytes, with zeros before them.
        Run.Shift = 8 * (8 - Run.Count);
        Run.Scale = PowersOfTenInt[Run.Count];
    }
    if (Run.Count == 0)
    {
        return 0;
    }
    // The digits, summed in pairs, fours and eights.
    uint64 Digits = Values << Run.Shift;
    Digits = (Digits * 10) + (Digits >> 8);
    Digits = (((Digits & 0x000000FF000000FFull) * (100 + (1000000ull << 32))) +
              (((Digits >> 16) & 0x000000FF000000FFull) * (1 + (10000ull << 32)))) >>
             32;
    Mantissa = Mantissa * Run.Scale + (Digits & 0xFFFFFFFFull);
    return Run.Count;
}

// One number at At, read no further than At + NumberReach. Null when the token
// is not a plain number; the byte after it is the caller's to check.
[[gnu::always_inline]] inline const char* ReadNumber(const char* At, FPlainNumberReader::FLayout& Layout,
                                                     double& OutNumber)
{
    bool bNegative = false;
    if (*At == '-')
    {
        bNegative = true;
        ++At;
    }
    uint64 Mantissa = 0;
    int32 IntegerDigits = 1;
    if (*At == '0')
    {
        // A leading zero stands alone: in "01" the caller finds a digit where a
        // separator should be.
        ++At;
    }
    else
    {
        // A ninth digit is left for the caller to find where a separator should be.
        IntegerDigits = ReadEightDigits(At, Layout.Integer, Mantissa);
        if (IntegerDigits == 0)
        {
            return nullptr;
        }
        At += IntegerDigits;
    }
    int32 Decimals = 0;
    if (*At == '.')
    {
        Decimals = ReadEightDigits(At + 1, Layout.Decimals, Mantissa);
        if (Decimals == 8) [[unlikely]]
        {
            Decimals += ReadEightDigits(At + 9, Layout.MoreDecimals, Mantissa);
        }
        At += 1 + Decimals;
        if (Decimals == 0 || IntegerDigits + Decimals > MaxDigits)
        {
            return nullptr;
        }
    }
    // Below 2^53, so the signed conversion serves, and it is the cheaper one.
    OutNumber = static_cast<double>(static_cast<int64>(Mantissa)) / PowersOfTen[Decimals];
    // The host's tree holds integers as integers, so "-0" reads as 0, while "-0.0"
    // keeps its sign.
    if (bNegative && (Decimals > 0 || Mantissa != 0))
    {
        OutNumber = -OutNumber;
    }
    return At;
}

// The numbers of an array from its first, with the array's end position; null
// when it holds anything else.
const char* ReadNumbers(const char* At, const char* End, FPlainNumberReader::FLayout& Layout,
                        std::vector<double>& OutNumbers)
{
    for (;;)
    {
        // Near the end of the text the general path reads what is left.
        double Number = 0.0;
        if (End - At < NumberReach || (At = ReadNumber(At, Layout, Number)) == nullptr)
        {
            return nullptr;
        }
        OutNumbers.push_back(Number);
        // A number read whole is at most 17 bytes long, so the byte after it, and
        // the one after a comma, lie inside the text.
        if (IsSpace(*At)) [[unlikely]]
        {
            At = SkipSpace(At, End);
            if (At == End)
            {
                return nullptr;
            }
        }
        if (*At != ',')
        {
            return *At == ']' ? At + 1 : nullptr;
        }
        if (IsSpace(*++At)) [[unlikely]]
        {
            At = SkipSpace(At, End);
        }
    }
}
} // namespace

const char* CadrelJson::FastJson::FPlainNumberReader::ReadArray(const char* Open,
                                                                std::vector<double>& OutNumbers)
{
    const char* const End = Workspace.TextEnd();
    const char* const First = SkipSpace(Open + 1, End);
    if (First == End || *First == ']')
    {
        return nullptr;
    }
    // A local copy stays in registers through the loop.
    FLayout Layout = LastLayout;
    const char* const Close = ReadNumbers(First, End, Layout, OutNumbers);
    LastLayout = Layout;
    return Close;
}
