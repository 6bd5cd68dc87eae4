#pragma once

#include "CoreMinimal.h"
#include "JsonGlobals.h"

class FJsonObject;

enum class EJson
{
    None,
    Null,
    String,
    Number,
    Boolean,
    Array,
    Object,
};

// One node of a parsed document. The As* accessors never fail: each yields exactly
// one result, the type's fallback when the value does not hold that type, so that
// readers can walk a document of unknown shape without testing every step.
class JSON_API FJsonValue
{
public:
    virtual ~FJsonValue() = default;

    // A value that is not an object yields a null pointer rather than an empty
    // object: readers test the result and stop, instead of reading every key of a
    // made-up object as absent.
    const TSharedPtr<FJsonObject>& AsObject() const;
    // A value that is not an array yields an empty array.
    const TArray<TSharedPtr<FJsonValue>>& AsArray() const;
    // 0 for a value without a number (see TryGetNumber for strings).
    double AsNumber() const;
    // Empty for a value without a string form (see TryGetString).
    FString AsString() const;
    // false for anything but a boolean.
    bool AsBool() const;

    // Numbers, and strings that hold exactly one JSON number: some writers send
    // numbers as text ("prev_size":"12", "latency":"0.25"), and those must read
    // back as the numbers they were. Anything else in the string (whitespace, a
    // sign '+', a number out of double range) makes it not a number.
    bool TryGetNumber(double& OutNumber) const { return ReadNumber(OutNumber); }
    // The number truncated toward zero; values beyond the integer type's range
    // saturate at its limits.
    bool TryGetNumber(int32& OutNumber) const;
    bool TryGetNumber(int64& OutNumber) const;
    // A string's text; a number's shortest decimal text that reads back as the same
    // double; "true" or "false" for a boolean. Null, arrays and objects have none.
    bool TryGetString(FString& OutString) const { return ReadString(OutString); }
    // Booleans only: unlike numbers, flags are not read out of strings.
    bool TryGetBool(bool& OutBool) const { return ReadBool(OutBool); }
    bool TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const;
    bool TryGetObject(const TSharedPtr<FJsonObject>*& OutObject) const;

    bool IsNull() const { return Type == EJson::Null || Type == EJson::None; }

    EJson Type = EJson::None;

protected:
    explicit FJsonValue(EJson InType) : Type(InType) {}

    virtual bool ReadNumber(double&) const { return false; }
    virtual bool ReadString(FString&) const { return false; }
    virtual bool ReadBool(bool&) const { return false; }
    virtual const TArray<TSharedPtr<FJsonValue>>* FindArray() const { return nullptr; }
    virtual const TSharedPtr<FJsonObject>* FindObject() const { return nullptr; }
};

class JSON_API FJsonValueString : public FJsonValue
{
public:
    explicit FJsonValueString(FString InValue) : FJsonValue(EJson::String), Value(std::move(InValue)) {}
    const FString& GetValue() const { return Value; }

protected:
    bool ReadNumber(double& OutNumber) const override;
    bool ReadString(FString& OutString) const override;

private:
    FString Value;
};

class JSON_API FJsonValueNumber : public FJsonValue
{
public:
    explicit FJsonValueNumber(double InValue) : FJsonValue(EJson::Number), Value(InValue) {}

protected:
    bool ReadNumber(double& OutNumber) const override;
    bool ReadString(FString& OutString) const override;

private:
    double Value;
};

class JSON_API FJsonValueBoolean : public FJsonValue
{
public:
    explicit FJsonValueBoolean(bool bInValue) : FJsonValue(EJson::Boolean), bValue(bInValue) {}

protected:
    bool ReadString(FString& OutString) const override;
    bool ReadBool(bool& bOutValue) const override;

private:
    bool bValue;
};

class JSON_API FJsonValueArray : public FJsonValue
{
public:
    explicit FJsonValueArray(TArray<TSharedPtr<FJsonValue>> InValue)
        : FJsonValue(EJson::Array), Value(std::move(InValue))
    {
    }

protected:
    const TArray<TSharedPtr<FJsonValue>>* FindArray() const override { return &Value; }

private:
    TArray<TSharedPtr<FJsonValue>> Value;
};

class JSON_API FJsonValueObject : public FJsonValue
{
public:
    explicit FJsonValueObject(TSharedPtr<FJsonObject> InValue)
        : FJsonValue(EJson::Object), Value(std::move(InValue))
    {
    }

protected:
    const TSharedPtr<FJsonObject>* FindObject() const override { return &Value; }

private:
    TSharedPtr<FJsonObject> Value;
};

class JSON_API FJsonValueNull : public FJsonValue
{
public:
    FJsonValueNull() : FJsonValue(EJson::Null) {}
};
