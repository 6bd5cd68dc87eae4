#include "UObject/Property.h"

#include "Config/ConfigValueText.h"
#include "UObject/Enum.h"

#include <limits>

namespace
{
const FString EmptyMetaData;

// A null ValuePtr only checks the text.
template <typename ValueType> bool Assign(void* ValuePtr, bool bParsed, const ValueType& Parsed)
{
    if (bParsed && ValuePtr)
    {
        *static_cast<ValueType*>(ValuePtr) = Parsed;
    }
    return bParsed;
}

bool ImportByte(const FString& Text, const UEnum* Enum, void* ValuePtr)
{
    int64 Value = INDEX_NONE;
    if (Enum)
    {
        Value = Enum->GetValueByName(FName(Text));
    }
    else if (!ConfigValueText::ParseInt64(Text, Value))
    {
        return false;
    }
    return Assign(ValuePtr, Value >= 0 && Value <= std::numeric_limits<uint8>::max(),
                  static_cast<uint8>(Value));
}

FString ExportByte(uint8 Value, const UEnum* Enum)
{
    if (Enum)
    {
        const FString Name = Enum->GetNameStringByValue(Value);
        if (!Name.IsEmpty())
        {
            return Name;
        }
    }
    return ConfigValueText::FormatInt64(Value);
}
} // namespace

FProperty::FProperty(const FPropertyParams& Params)
    : Name(Params.Name), Type(Params.Type), Access(Params.Access), Flags(Params.Flags),
      Category(Params.Category)
{
    for (const FMetaDataPair& Pair : Params.MetaData)
    {
        MetaData.Add(FName(Pair.Key), FString(Pair.Value));
    }
}

const FString& FProperty::GetMetaData(const FName& Key) const
{
    const FString* Found = MetaData.Find(Key);
    return Found ? *Found : EmptyMetaData;
}

bool FProperty::ExportValueText(const void* Container, FString& OutText) const
{
    const void* ValuePtr = ContainerPtrToValuePtr(Container);
    switch (GetKind())
    {
    case EPropertyKind::String:
        OutText = *static_cast<const FString*>(ValuePtr);
        return true;
    case EPropertyKind::Int32:
        OutText = ConfigValueText::FormatInt64(*static_cast<const int32*>(ValuePtr));
        return true;
    case EPropertyKind::Int64:
        OutText = ConfigValueText::FormatInt64(*static_cast<const int64*>(ValuePtr));
        return true;
    case EPropertyKind::Float:
        OutText = ConfigValueText::FormatFloat(*static_cast<const float*>(ValuePtr));
        return true;
    case EPropertyKind::Double:
        OutText = ConfigValueText::FormatDouble(*static_cast<const double*>(ValuePtr));
        return true;
    case EPropertyKind::Bool:
        OutText = ConfigValueText::FormatBool(*static_cast<const bool*>(ValuePtr));
        return true;
    case EPropertyKind::Byte:
        OutText = ExportByte(*static_cast<const uint8*>(ValuePtr), GetEnum());
        return true;
    case EPropertyKind::Struct:
    case EPropertyKind::Array:
        break;
    }
    return false;
}

bool FProperty::ImportValueText(const FString& Text, void* Container) const
{
    return ImportToValuePtr(Text, ContainerPtrToValuePtr(Container));
}

bool FProperty::IsValidValueText(const FString& Text) const
{
    return ImportToValuePtr(Text, nullptr);
}

bool FProperty::ImportToValuePtr(const FString& Text, void* ValuePtr) const
{
    switch (GetKind())
    {
    case EPropertyKind::String:
        return Assign(ValuePtr, true, Text);
    case EPropertyKind::Int32:
    {
        int32 Value = 0;
        return Assign(ValuePtr, ConfigValueText::ParseInt32(Text, Value), Value);
    }
    case EPropertyKind::Int64:
    {
        int64 Value = 0;
        return Assign(ValuePtr, ConfigValueText::ParseInt64(Text, Value), Value);
    }
    case EPropertyKind::Float:
    {
        float Value = 0.0f;
        return Assign(ValuePtr, ConfigValueText::ParseFloat(Text, Value), Value);
    }
    case EPropertyKind::Double:
    {
        double Value = 0.0;
        return Assign(ValuePtr, ConfigValueText::ParseDouble(Text, Value), Value);
    }
    case EPropertyKind::Bool:
    {
        bool bValue = false;
        return Assign(ValuePtr, ConfigValueText::ParseBool(Text, bValue), bValue);
    }
    case EPropertyKind::Byte:
        return ImportByte(Text, GetEnum(), ValuePtr);
    case EPropertyKind::Struct:
    case EPropertyKind::Array:
        break;
    }
    return false;
}
