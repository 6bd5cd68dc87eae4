#include "Dom/JsonValue.h"

#include "JsonNumberConversion.h"
#include "Serialization/JsonStringEscape.h"

#include <cmath>

namespace
{
const TSharedPtr<FJsonObject>& NoObject()
{
    static const TSharedPtr<FJsonObject> Null;
    return Null;
}

const TArray<TSharedPtr<FJsonValue>>& NoArray()
{
    static const TArray<TSharedPtr<FJsonValue>> Empty;
    return Empty;
}
} // namespace

const TSharedPtr<FJsonObject>& FJsonValue::AsObject() const
{
    const TSharedPtr<FJsonObject>* Object = FindObject();
    return Object ? *Object : NoObject();
}

const TArray<TSharedPtr<FJsonValue>>& FJsonValue::AsArray() const
{
    const TArray<TSharedPtr<FJsonValue>>* Array = FindArray();
    return Array ? *Array : NoArray();
}

double FJsonValue::AsNumber() const
{
    double Number = 0.0;
    ReadNumber(Number);
    return Number;
}

FString FJsonValue::AsString() const
{
    FString Text;
    ReadString(Text);
    return Text;
}

bool FJsonValue::AsBool() const
{
    bool bValue = false;
    return ReadBool(bValue) && bValue;
}

bool FJsonValue::TryGetNumber(int32& OutNumber) const
{
    double Number = 0.0;
    if (!ReadNumber(Number))
    {
        return false;
    }
    OutNumber = SaturatingTruncate<int32>(Number);
    return true;
}

bool FJsonValue::TryGetNumber(int64& OutNumber) const
{
    double Number = 0.0;
    if (!ReadNumber(Number))
    {
        return false;
    }
    OutNumber = SaturatingTruncate<int64>(Number);
    return true;
}

bool FJsonValue::TryGetArray(const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
    const TArray<TSharedPtr<FJsonValue>>* Array = FindArray();
    if (!Array)
    {
        return false;
    }
    OutArray = Array;
    return true;
}

bool FJsonValue::TryGetObject(const TSharedPtr<FJsonObject>*& OutObject) const
{
    const TSharedPtr<FJsonObject>* Object = FindObject();
    if (!Object || !Object->IsValid())
    {
        return false;
    }
    OutObject = Object;
    return true;
}

bool FJsonValueString::ReadNumber(double& OutNumber) const
{
    return ParseJsonNumberText(Value.View(), OutNumber);
}

bool FJsonValueString::ReadString(FString& OutString) const
{
    OutString = Value;
    return true;
}

bool FJsonValueNumber::ReadNumber(double& OutNumber) const
{
    OutNumber = Value;
    return true;
}

bool FJsonValueNumber::ReadString(FString& OutString) const
{
    // Written the way the writer prints numbers, so text read back compares equal.
    // NaN and infinity have no JSON text; the writer prints them as null.
    if (!std::isfinite(Value))
    {
        return false;
    }
    FString Text;
    AppendJsonNumber(Text, Value);
    OutString = std::move(Text);
    return true;
}

bool FJsonValueBoolean::ReadString(FString& OutString) const
{
    OutString = bValue ? TEXT("true") : TEXT("false");
    return true;
}

bool FJsonValueBoolean::ReadBool(bool& bOutValue) const
{
    bOutValue = bValue;
    return true;
}
