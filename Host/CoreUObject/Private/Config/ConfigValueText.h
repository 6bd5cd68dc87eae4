#pragma once

#include "CoreMinimal.h"

// The configuration text forms of scalar values. Parsing takes the whole text or
// nothing, independent of the locale; numbers are written so that they read back
// exactly (int64 beyond 2^53 included).
namespace ConfigValueText
{
bool ParseInt64(const FString& Text, int64& OutValue);
bool ParseInt32(const FString& Text, int32& OutValue);
bool ParseDouble(const FString& Text, double& OutValue);
bool ParseFloat(const FString& Text, float& OutValue);
// True/False, Yes/No, On/Off, 1/0 in any letter case.
bool ParseBool(const FString& Text, bool& OutValue);

FString FormatInt64(int64 Value);
FString FormatDouble(double Value);
FString FormatFloat(float Value);
FString FormatBool(bool bValue);

// A string as an entry writes it: as it is, or in double quotes with backslash
// escapes when it has surrounding blanks, starts with a quote or holds control
// characters, so that every string reads back unchanged.
FString QuoteIfNeeded(const FString& Value);
// The string an entry's (trimmed) value text stands for. False for a value that
// opens a quote and does not close it at its end.
bool Unquote(const FString& Text, FString& OutValue);
} // namespace ConfigValueText
