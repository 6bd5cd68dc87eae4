#include "UObject/Class.h"

UStruct::UStruct(const TCHAR* InName, const TCHAR* InPackage, std::span<const FPropertyParams> InProperties,
                 ETypeFlags InFlags, std::span<const FMetaDataPair> InMetaData)
    : UField(InName, InPackage, InFlags, InMetaData)
{
    OwnedProperties.reserve(InProperties.size());
    for (const FPropertyParams& Params : InProperties)
    {
        OwnedProperties.emplace_back(Params);
    }
    for (FProperty& Property : OwnedProperties)
    {
        Properties.Add(&Property);
    }
}

FProperty* UStruct::FindPropertyByName(FName Name) const
{
    for (const UStruct* Struct = this; Struct; Struct = Struct->GetSuperStruct())
    {
        for (FProperty* Property : Struct->Properties)
        {
            if (Property->GetFName() == Name)
            {
                return Property;
            }
        }
    }
    return nullptr;
}

UScriptStruct::UScriptStruct(const FStructParams& Params)
    : UStruct(Params.Name, Params.Package, Params.Properties, Params.Flags, Params.MetaData)
{
}

UClass::UClass(const FClassParams& Params)
    : UStruct(Params.Name, Params.Package, Params.Properties, Params.Flags, Params.MetaData),
      SuperAccessor(Params.SuperAccessor), ConfigName(Params.ConfigName), Factory(Params.Factory)
{
}

UClass::~UClass()
{
    delete DefaultObject;
}

bool UClass::IsChildOf(const UClass* Other) const
{
    for (const UClass* Class = this; Class; Class = Class->GetSuperClass())
    {
        if (Class == Other)
        {
            return true;
        }
    }
    return false;
}

UObject* UClass::GetDefaultObject(bool bCreateIfNeeded) const
{
    std::lock_guard<std::mutex> Lock(DefaultObjectMutex);
    if (!DefaultObject && bCreateIfNeeded && Factory)
    {
        DefaultObject = Factory();
        DefaultObject->ClassPrivate = const_cast<UClass*>(this);
        DefaultObject->NamePrivate = FName(FString(TEXT("Default__")) + GetName());
    }
    return DefaultObject;
}

UObject* GetDefaultObjectOf(const UClass* Class)
{
    return Class ? Class->GetDefaultObject() : nullptr;
}
