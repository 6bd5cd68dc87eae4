#include "Dom/JsonObject.h"

#include "JsonNumberConversion.h"

ORV_DEFINE_LOG_CATEGORY_STATIC(LogJson, Warning, All);

namespace
{
// Stands in for an absent field, so every getter gives the same fallback for an
// absent key as for a value of the wrong type.
const FJsonValue& AbsentValue()
{
    static const FJsonValueNull Absent;
    return Absent;
}
} // namespace

const FJsonValue* FJsonObject::FindValue(const FString& FieldName) const
{
    const TSharedPtr<FJsonValue>* Found = Values.Find(FieldName);
    return Found ? Found->Get() : nullptr;
}

const FJsonValue* FJsonObject::FindValueOrReport(const FString& FieldName) const
{
    const FJsonValue* Found = FindValue(FieldName);
    if (!Found)
    {
        ORV_LOG(LogJson, Verbose, TEXT("Field %s was not found."), *FieldName);
    }
    return Found;
}

bool FJsonObject::HasField(const FString& FieldName) const
{
    return FindValue(FieldName) != nullptr;
}

TSharedPtr<FJsonValue> FJsonObject::TryGetField(const FString& FieldName) const
{
    const TSharedPtr<FJsonValue>* Found = Values.Find(FieldName);
    return Found ? *Found : TSharedPtr<FJsonValue>();
}

TSharedPtr<FJsonValue> FJsonObject::GetField(const FString& FieldName) const
{
    return FindValueOrReport(FieldName) ? TryGetField(FieldName) : TSharedPtr<FJsonValue>();
}

FString FJsonObject::GetStringField(const FString& FieldName) const
{
    const FJsonValue* Found = FindValueOrReport(FieldName);
    return (Found ? *Found : AbsentValue()).AsString();
}

double FJsonObject::GetNumberField(const FString& FieldName) const
{
    const FJsonValue* Found = FindValueOrReport(FieldName);
    return (Found ? *Found : AbsentValue()).AsNumber();
}

int32 FJsonObject::GetIntegerField(const FString& FieldName) const
{
    return SaturatingTruncate<int32>(GetNumberField(FieldName));
}

bool FJsonObject::GetBoolField(const FString& FieldName) const
{
    const FJsonValue* Found = FindValueOrReport(FieldName);
    return (Found ? *Found : AbsentValue()).AsBool();
}

const TArray<TSharedPtr<FJsonValue>>& FJsonObject::GetArrayField(const FString& FieldName) const
{
    const FJsonValue* Found = FindValueOrReport(FieldName);
    return (Found ? *Found : AbsentValue()).AsArray();
}

const TSharedPtr<FJsonObject>& FJsonObject::GetObjectField(const FString& FieldName) const
{
    const FJsonValue* Found = FindValueOrReport(FieldName);
    return (Found ? *Found : AbsentValue()).AsObject();
}

bool FJsonObject::TryGetStringField(const FString& FieldName, FString& OutString) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetString(OutString);
}

bool FJsonObject::TryGetNumberField(const FString& FieldName, double& OutNumber) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(const FString& FieldName, int32& OutNumber) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetNumberField(const FString& FieldName, int64& OutNumber) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetNumber(OutNumber);
}

bool FJsonObject::TryGetBoolField(const FString& FieldName, bool& bOutValue) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetBool(bOutValue);
}

bool FJsonObject::TryGetArrayField(const FString& FieldName,
                                   const TArray<TSharedPtr<FJsonValue>>*& OutArray) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetArray(OutArray);
}

bool FJsonObject::TryGetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>*& OutObject) const
{
    const FJsonValue* Found = FindValue(FieldName);
    return Found && Found->TryGetObject(OutObject);
}

void FJsonObject::SetField(const FString& FieldName, const TSharedPtr<FJsonValue>& Value)
{
    Values.Add(FieldName, Value);
}

void FJsonObject::SetStringField(const FString& FieldName, const FString& Value)
{
    Values.Add(FieldName, MakeShared<FJsonValueString>(Value));
}

void FJsonObject::SetNumberField(const FString& FieldName, double Value)
{
    Values.Add(FieldName, MakeShared<FJsonValueNumber>(Value));
}

void FJsonObject::SetBoolField(const FString& FieldName, bool bValue)
{
    Values.Add(FieldName, MakeShared<FJsonValueBoolean>(bValue));
}

void FJsonObject::SetArrayField(const FString& FieldName, const TArray<TSharedPtr<FJsonValue>>& Value)
{
    Values.Add(FieldName, MakeShared<FJsonValueArray>(Value));
}

void FJsonObject::SetObjectField(const FString& FieldName, const TSharedPtr<FJsonObject>& Value)
{
    Values.Add(FieldName, MakeShared<FJsonValueObject>(Value));
}

void FJsonObject::RemoveField(const FString& FieldName)
{
    Values.Remove(FieldName);
}
