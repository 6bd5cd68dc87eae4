#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "JsonGlobals.h"
#include "Serialization/JsonReader.h"

// Turns a reader's text into a tree of shared JSON values. The text must be one
// complete RFC 8259 document; anything else fails, and so do the limits the parser
// sets: nesting deeper than 1024 levels, a number too large for a double (1e400),
// an integer without fraction or exponent outside the 64-bit range, a text of 2 GiB
// or more. On failure the output is left as it was and the reader carries
// the reason in GetErrorMessage().
class JSON_API FJsonSerializer
{
public:
    enum class EFlags : uint8
    {
        None = 0,
    };

    // Succeeds only when the top level is an object or an array.
    template <typename CharType>
    static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader, TSharedPtr<FJsonValue>& OutValue,
                            EFlags = EFlags::None)
    {
        return DeserializeValue(*Reader, OutValue);
    }

    // Succeeds only when the top level is an object.
    template <typename CharType>
    static bool Deserialize(const TSharedRef<TJsonReader<CharType>>& Reader,
                            TSharedPtr<FJsonObject>& OutObject, EFlags = EFlags::None)
    {
        return DeserializeObject(*Reader, OutObject);
    }

private:
    static bool DeserializeValue(FJsonReaderSource& Reader, TSharedPtr<FJsonValue>& OutValue);
    static bool DeserializeObject(FJsonReaderSource& Reader, TSharedPtr<FJsonObject>& OutObject);
};
