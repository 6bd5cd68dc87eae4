#pragma once

#include "CoreTypes.h"
#include "Containers/String.h"

enum class EGuidFormats
{
    // 00000000000000000000000000000000
    Digits,
    // 00000000-0000-0000-0000-000000000000
    DigitsWithHyphens,
    // {00000000-0000-0000-0000-000000000000}
    DigitsWithHyphensInBraces,
    // (00000000-0000-0000-0000-000000000000)
    DigitsWithHyphensInParentheses,
    // 00000000000000000000000000000000, lower case
    DigitsLower,
    // 00000000-0000-0000-0000-000000000000, lower case
    DigitsWithHyphensLower,
};

// 128-bit identifier as four 32-bit words; all zero is the invalid identifier.
struct CORE_API FGuid
{
    uint32 A = 0;
    uint32 B = 0;
    uint32 C = 0;
    uint32 D = 0;

    FGuid() = default;
    FGuid(uint32 InA, uint32 InB, uint32 InC, uint32 InD) : A(InA), B(InB), C(InC), D(InD) {}

    bool IsValid() const { return (A | B | C | D) != 0; }
    void Invalidate() { A = B = C = D = 0; }
    bool operator==(const FGuid& Other) const = default;

    void AppendString(FString& Out, EGuidFormats Format = EGuidFormats::DigitsWithHyphens) const;
    FString ToString(EGuidFormats Format = EGuidFormats::Digits) const;

    // A random identifier from the operating system's random source; never invalid.
    static FGuid NewGuid();

    // Reads any of the text forms of EGuidFormats (case-insensitive digits). A text
    // in none of them gives false and an invalid OutGuid, so that a caller that
    // ignores the result never keeps a stale identifier.
    static bool Parse(const FString& Text, FGuid& OutGuid);
};

CORE_API uint32 GetTypeHash(const FGuid& Guid);
