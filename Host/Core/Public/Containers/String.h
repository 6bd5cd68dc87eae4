#pragma once

#include "CoreTypes.h"
#include "Containers/Array.h"

#include <cstdarg>
#include <string>
#include <string_view>
#include <utility>

namespace ESearchCase
{
enum Type
{
    CaseSensitive,
    IgnoreCase,
};
}

// The host's text: UTF-16 code units over std::u16string. Comparison, ordering and
// hashing ignore the case of A-Z unless CaseSensitive is asked for.
class CORE_API FString
{
public:
    FString() = default;
    FString(const TCHAR* Text) : Data(Text ? Text : u"") {}
    FString(const TCHAR* Text, int32 Count) : Data(Text, Text && Count > 0 ? Count : 0) {}
    explicit FString(std::u16string Text) : Data(std::move(Text)) {}
    explicit FString(std::u16string_view Text) : Data(Text) {}

    // Bytes are taken as UTF-8; invalid sequences become U+FFFD.
    static FString FromUTF8(std::string_view Utf8);
    // Lone surrogates become U+FFFD.
    std::string ToUTF8() const;

    const TCHAR* operator*() const { return Data.c_str(); }
    int32 Len() const { return static_cast<int32>(Data.size()); }
    bool IsEmpty() const { return Data.empty(); }
    void Empty() { Data.clear(); }
    void Reserve(int32 Count) { Data.reserve(Count > 0 ? static_cast<SIZE_T>(Count) : 0); }
    const std::u16string& GetStd() const { return Data; }
    std::u16string_view View() const { return Data; }

    TCHAR& operator[](int32 Index)
    {
        ORV_CHECK(Index >= 0 && Index < Len());
        return Data[static_cast<SIZE_T>(Index)];
    }
    const TCHAR& operator[](int32 Index) const
    {
        ORV_CHECK(Index >= 0 && Index < Len());
        return Data[static_cast<SIZE_T>(Index)];
    }

    FString& Append(const FString& Text) { return Append(Text.View()); }
    FString& Append(const TCHAR* Text) { return Append(std::u16string_view(Text ? Text : u"")); }
    FString& Append(const TCHAR* Text, int32 Count)
    {
        return Append(std::u16string_view(Text, Count > 0 ? Count : 0));
    }
    FString& Append(std::u16string_view Text)
    {
        Data.append(Text);
        return *this;
    }
    FString& AppendChar(TCHAR Char)
    {
        Data.push_back(Char);
        return *this;
    }
    FString& AppendChars(const TCHAR* Text, int32 Count) { return Append(Text, Count); }
    void AppendInt(int32 Value);
    FString& operator+=(const FString& Text) { return Append(Text); }
    FString& operator+=(const TCHAR* Text) { return Append(Text); }
    FString& operator+=(TCHAR Char) { return AppendChar(Char); }

    // Joins a path component, with one '/' between a non-empty text not already
    // ending in a separator and the appended part.
    void PathAppend(const TCHAR* Str, int32 StrLength);
    void PathAppend(const FString& Str) { PathAppend(*Str, Str.Len()); }

    void RemoveAt(int32 Index, int32 Count = 1);
    FString ToLower() const&;
    FString ToLower() &&;
    void ToLowerInline();
    FString ToUpper() const;

    FString Left(int32 Count) const;
    FString Mid(int32 Start, int32 Count = INT32_MAX) const;
    FString RightChop(int32 Count) const { return Mid(Count); }
    bool StartsWith(const FString& Prefix, ESearchCase::Type Case = ESearchCase::IgnoreCase) const;
    bool EndsWith(const FString& Suffix, ESearchCase::Type Case = ESearchCase::IgnoreCase) const;
    int32 Find(const FString& Needle, ESearchCase::Type Case = ESearchCase::IgnoreCase) const;
    bool Contains(const FString& Needle, ESearchCase::Type Case = ESearchCase::IgnoreCase) const
    {
        return Find(Needle, Case) != INDEX_NONE;
    }

    bool Equals(const FString& Other, ESearchCase::Type Case = ESearchCase::IgnoreCase) const;
    int32 Compare(const FString& Other, ESearchCase::Type Case = ESearchCase::IgnoreCase) const;
    bool operator==(const FString& Other) const { return Equals(Other); }
    bool operator==(const TCHAR* Other) const { return Equals(FString(Other)); }
    bool operator<(const FString& Other) const { return Compare(Other) < 0; }

    static FString FromInt(int32 Value);
    // Fixed-point text as C's "%.6f" writes it, trailing zeros trimmed while at
    // least MinFractionalDigits digits stay after the point.
    static FString SanitizeFloat(double Value, int32 MinFractionalDigits = 1);
    // printf-style formatting; %s takes a const TCHAR*.
    static FString Printf(const TCHAR* Format, ...);
    static FString PrintfV(const TCHAR* Format, va_list Args);

private:
    std::u16string Data;
};

inline FString operator+(FString Lhs, const FString& Rhs)
{
    Lhs.Append(Rhs);
    return Lhs;
}
inline FString operator+(FString Lhs, const TCHAR* Rhs)
{
    Lhs.Append(Rhs);
    return Lhs;
}
inline FString operator+(const TCHAR* Lhs, const FString& Rhs)
{
    return FString(Lhs) + Rhs;
}

// Hash that agrees with FString's case-insensitive equality.
CORE_API uint32 GetTypeHash(const FString& Text);

inline TCHAR ToUpperAscii(TCHAR Char)
{
    return (Char >= u'a' && Char <= u'z') ? static_cast<TCHAR>(Char - (u'a' - u'A')) : Char;
}
inline TCHAR ToLowerAscii(TCHAR Char)
{
    return (Char >= u'A' && Char <= u'Z') ? static_cast<TCHAR>(Char + (u'a' - u'A')) : Char;
}

// Converters behind TCHAR_TO_UTF8 and UTF8_TO_TCHAR; the pointer lives as long as
// the converter, that is to the end of the full expression.
class CORE_API FTCHARToUTF8
{
public:
    explicit FTCHARToUTF8(const TCHAR* Text) : Converted(FString(Text).ToUTF8()) {}
    explicit FTCHARToUTF8(const FString& Text) : Converted(Text.ToUTF8()) {}
    const char* Get() const { return Converted.c_str(); }
    int32 Length() const { return static_cast<int32>(Converted.size()); }
    operator const char*() const { return Get(); }

private:
    std::string Converted;
};

class CORE_API FUTF8ToTCHAR
{
public:
    explicit FUTF8ToTCHAR(const char* Text) : Converted(FString::FromUTF8(Text ? Text : "")) {}
    const TCHAR* Get() const { return *Converted; }
    int32 Length() const { return Converted.Len(); }
    operator const TCHAR*() const { return Get(); }

private:
    FString Converted;
};

#define TCHAR_TO_UTF8(Text) (FTCHARToUTF8(Text).Get())
#define UTF8_TO_TCHAR(Text) (FUTF8ToTCHAR(Text).Get())
