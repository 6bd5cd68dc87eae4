#include "Containers/String.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <utf8.h>

namespace
{
int32 CompareUnits(std::u16string_view A, std::u16string_view B, ESearchCase::Type Case)
{
    const SIZE_T Common = std::min(A.size(), B.size());
    for (SIZE_T Index = 0; Index < Common; ++Index)
    {
        TCHAR Left = A[Index];
        TCHAR Right = B[Index];
        if (Case == ESearchCase::IgnoreCase)
        {
            Left = ToUpperAscii(Left);
            Right = ToUpperAscii(Right);
        }
        if (Left != Right)
        {
            return Left < Right ? -1 : 1;
        }
    }
    return A.size() == B.size() ? 0 : (A.size() < B.size() ? -1 : 1);
}

bool IsHighSurrogate(uint32 Unit)
{
    return Unit >= 0xD800 && Unit <= 0xDBFF;
}
bool IsLowSurrogate(uint32 Unit)
{
    return Unit >= 0xDC00 && Unit <= 0xDFFF;
}
} // namespace

FString FString::FromUTF8(std::string_view Utf8)
{
    FString Result;
    Result.Data.reserve(Utf8.size());
    const auto AllAscii = std::find_if(Utf8.begin(), Utf8.end(), [](char C) { return (C & 0x80) != 0; });
    Result.Data.assign(Utf8.begin(), AllAscii);
    if (AllAscii == Utf8.end())
    {
        return Result;
    }
    std::string Valid;
    const std::string_view Rest = Utf8.substr(static_cast<SIZE_T>(AllAscii - Utf8.begin()));
    utf8::replace_invalid(Rest.begin(), Rest.end(), std::back_inserter(Valid));
    utf8::unchecked::utf8to16(Valid.begin(), Valid.end(), std::back_inserter(Result.Data));
    return Result;
}

std::string FString::ToUTF8() const
{
    // Host text is nearly all ASCII: the ASCII lead is narrowed in one bulk copy,
    // and only the rest goes unit by unit.
    const auto FirstWide = std::find_if(Data.begin(), Data.end(), [](TCHAR Unit) { return Unit >= 0x80; });
    std::string Result(Data.begin(), FirstWide);
    const SIZE_T Count = Data.size();
    if (FirstWide == Data.end())
    {
        return Result;
    }
    Result.reserve(Count + (Count - Result.size()) * 2);
    for (SIZE_T Index = Result.size(); Index < Count; ++Index)
    {
        uint32 Unit = Data[Index];
        if (Unit < 0x80)
        {
            Result.push_back(static_cast<char>(Unit));
            continue;
        }
        if (IsHighSurrogate(Unit) && Index + 1 < Count && IsLowSurrogate(Data[Index + 1]))
        {
            Unit = 0x10000 + ((Unit - 0xD800) << 10) + (Data[Index + 1] - 0xDC00u);
            ++Index;
        }
        else if (IsHighSurrogate(Unit) || IsLowSurrogate(Unit))
        {
            Unit = 0xFFFD;
        }
        utf8::unchecked::append(Unit, std::back_inserter(Result));
    }
    return Result;
}

void FString::AppendInt(int32 Value)
{
    char Digits[16];
    const std::to_chars_result Result = std::to_chars(Digits, Digits + sizeof(Digits), Value);
    Data.append(Digits, Result.ptr);
}

FString FString::FromInt(int32 Value)
{
    FString Result;
    Result.AppendInt(Value);
    return Result;
}

void FString::PathAppend(const TCHAR* Str, int32 StrLength)
{
    if (!Data.empty() && Data.back() != u'/' && Data.back() != u'\\')
    {
        Data.push_back(u'/');
    }
    if (Str && StrLength > 0)
    {
        Data.append(Str, static_cast<SIZE_T>(StrLength));
    }
}

void FString::RemoveAt(int32 Index, int32 Count)
{
    ORV_CHECK(Index >= 0 && Count >= 0 && Index + Count <= Len());
    Data.erase(static_cast<SIZE_T>(Index), static_cast<SIZE_T>(Count));
}

void FString::ToLowerInline()
{
    std::transform(Data.begin(), Data.end(), Data.begin(), ToLowerAscii);
}

FString FString::ToLower() const&
{
    FString Result(*this);
    Result.ToLowerInline();
    return Result;
}

FString FString::ToLower() &&
{
    ToLowerInline();
    return std::move(*this);
}

FString FString::ToUpper() const
{
    FString Result(*this);
    std::transform(Result.Data.begin(), Result.Data.end(), Result.Data.begin(), ToUpperAscii);
    return Result;
}

FString FString::Left(int32 Count) const
{
    return Mid(0, Count);
}

FString FString::Mid(int32 Start, int32 Count) const
{
    const int32 First = std::clamp(Start, 0, Len());
    const int64 Last = std::clamp<int64>(static_cast<int64>(First) + std::max(Count, 0), First, Len());
    return FString(
        std::u16string_view(Data).substr(static_cast<SIZE_T>(First), static_cast<SIZE_T>(Last - First)));
}

bool FString::StartsWith(const FString& Prefix, ESearchCase::Type Case) const
{
    return Prefix.Len() <= Len() &&
           CompareUnits(View().substr(0, Prefix.Data.size()), Prefix.View(), Case) == 0;
}

bool FString::EndsWith(const FString& Suffix, ESearchCase::Type Case) const
{
    return Suffix.Len() <= Len() &&
           CompareUnits(View().substr(Data.size() - Suffix.Data.size()), Suffix.View(), Case) == 0;
}

int32 FString::Find(const FString& Needle, ESearchCase::Type Case) const
{
    if (Needle.Len() > Len())
    {
        return INDEX_NONE;
    }
    for (int32 Start = 0; Start + Needle.Len() <= Len(); ++Start)
    {
        if (CompareUnits(View().substr(static_cast<SIZE_T>(Start), Needle.Data.size()), Needle.View(),
                         Case) == 0)
        {
            return Start;
        }
    }
    return INDEX_NONE;
}

bool FString::Equals(const FString& Other, ESearchCase::Type Case) const
{
    return Data.size() == Other.Data.size() && CompareUnits(View(), Other.View(), Case) == 0;
}

int32 FString::Compare(const FString& Other, ESearchCase::Type Case) const
{
    return CompareUnits(View(), Other.View(), Case);
}

FString FString::SanitizeFloat(double Value, int32 MinFractionalDigits)
{
    char Buffer[512];
    const int Written = std::snprintf(Buffer, sizeof(Buffer), "%.6f", Value);
    std::string Text(Buffer,
                     static_cast<SIZE_T>(std::clamp(Written, 0, static_cast<int>(sizeof(Buffer) - 1))));
    const SIZE_T Point = Text.find('.');
    if (Point != std::string::npos)
    {
        const SIZE_T MinEnd = Point + 1 + static_cast<SIZE_T>(std::clamp(MinFractionalDigits, 0, 6));
        SIZE_T End = Text.size();
        while (End > MinEnd && Text[End - 1] == '0')
        {
            --End;
        }
        if (End == Point + 1)
        {
            End = Point;
        }
        Text.resize(End);
    }
    return FromUTF8(Text);
}

uint32 GetTypeHash(const FString& Text)
{
    // FNV-1a over the upper-cased code units, matching the case-insensitive ==.
    uint32 Hash = 2166136261u;
    for (const TCHAR Unit : Text.View())
    {
        Hash = (Hash ^ ToUpperAscii(Unit)) * 16777619u;
    }
    return Hash;
}
