#pragma once

#include "CoreMinimal.h"

#include "JsonGlobals.h"

// Appends Text as a quoted JSON string: backslash, quote, \b \f \n \r \t get their
// short escapes, other code units below 0x20 become \u00xx (lower-case hex), and
// everything else, slash and surrogates included, is copied unchanged.
JSON_API void AppendEscapedJsonString(FString& Out, const FString& Text);

// Shortest text that reads back as the same double; JSON has no NaN or infinity, so
// those are written as null.
JSON_API void AppendJsonNumber(FString& Out, double Value);
