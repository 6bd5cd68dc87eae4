#pragma once

#include "CoreMinimal.h"
#include "Dom/JsonValue.h"
#include "JsonGlobals.h"

// A JSON object. Keys are FString, so lookup ignores the case of A-Z: "Frames" and
// "frames" are one key, and a later duplicate replaces the earlier value while the
// key keeps its first position.
//
// The Get*Field accessors always yield a result: an absent key gives the type's
// fallback (empty text, 0, false, an empty array, a null object pointer), exactly
// as the value accessors of FJsonValue do for a value of another type. An absent
// key is reported at Verbose level only, so readers that rely on the fallback stay
// quiet at the default verbosity.
class JSON_API FJsonObject
{
public:
    TMap<FString, TSharedPtr<FJsonValue>> Values;

    // True when the key is present with a value (a JSON null counts as one).
    bool HasField(const FString& FieldName) const;
    // The value under the key, or a null pointer; silent when absent.
    TSharedPtr<FJsonValue> TryGetField(const FString& FieldName) const;
    // The value under the key, or a null pointer.
    TSharedPtr<FJsonValue> GetField(const FString& FieldName) const;

    FString GetStringField(const FString& FieldName) const;
    double GetNumberField(const FString& FieldName) const;
    // The number truncated toward zero, saturating at the int32 limits.
    int32 GetIntegerField(const FString& FieldName) const;
    bool GetBoolField(const FString& FieldName) const;
    const TArray<TSharedPtr<FJsonValue>>& GetArrayField(const FString& FieldName) const;
    const TSharedPtr<FJsonObject>& GetObjectField(const FString& FieldName) const;

    // Each returns false and leaves its output unchanged when the key is absent or
    // its value has no form of the wanted type (see FJsonValue's TryGet*).
    bool TryGetStringField(const FString& FieldName, FString& OutString) const;
    bool TryGetNumberField(const FString& FieldName, double& OutNumber) const;
    bool TryGetNumberField(const FString& FieldName, int32& OutNumber) const;
    bool TryGetNumberField(const FString& FieldName, int64& OutNumber) const;
    bool TryGetBoolField(const FString& FieldName, bool& bOutValue) const;
    bool TryGetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;
    bool TryGetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>*& OutObject) const;

    void SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value);
    void SetStringField(const FString& FieldName, const FString& Value);
    void SetNumberField(const FString& FieldName, double Value);
    void SetBoolField(const FString& FieldName, bool bValue);
    void SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Value);
    void SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& Value);
    void RemoveField(const FString& FieldName);

private:
    // Borrowed view of the value under the key, without touching reference counts;
    // null when absent.
    const FJsonValue* FindValue(const FString& FieldName) const;
    // As FindValue, reporting an absent key at Verbose level.
    const FJsonValue* FindValueOrReport(const FString& FieldName) const;
};
