#pragma once

#include "CoreMinimal.h"

#include "JsonGlobals.h"

#include <string>
#include <string_view>

// Appends Text as a quoted JSON string: backslash, quote, \b \f \n \r \t get their
// short escapes, other code units below 0x20 become \u00xx (lower-case hex), and
// everything else, slash and surrogates included, is copied unchanged.
JSON_API void AppendEscapedJsonString(FString& Out, const FString& Text);
// The same for UTF-8 text, byte by byte; for the UTF-8 of a host text it gives the
// UTF-8 of what the overload above gives.
JSON_API void AppendEscapedJsonString(std::string& Out, std::string_view Utf8);

// The longest text WriteJsonNumber writes: a sign, 17 digits, a point and "e-308".
inline constexpr int32 MaxJsonNumberLength = 24;

// Shortest text that reads back as the same double; JSON has no NaN or infinity, so
// those are written as null. WriteJsonNumber writes it at Out, which must have room
// for MaxJsonNumberLength characters, and returns its end.
JSON_API char* WriteJsonNumber(char* Out, double Value);
JSON_API void AppendJsonNumber(FString& Out, double Value);
