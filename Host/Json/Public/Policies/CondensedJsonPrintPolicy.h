#pragma once

#include "CoreMinimal.h"

// Print policy that writes no whitespace at all: no spaces after colons or commas,
// no line breaks, no indentation.
template <typename CharType> struct TCondensedJsonPrintPolicy
{
    static void WriteLineTerminator(FString&) {}
    static void WriteTabs(FString&, int32) {}
    static void WriteSpace(FString&) {}
};
