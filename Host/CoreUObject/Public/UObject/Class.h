#pragma once

#include "CoreMinimal.h"
#include "UObject/Enum.h"
#include "UObject/Field.h"
#include "UObject/Object.h"
#include "UObject/Property.h"

#include <mutex>
#include <span>
#include <vector>

// A reflected type with members: a record or a class.
class COREUOBJECT_API UStruct : public UField
{
public:
    UStruct(const TCHAR* InName, const TCHAR* InPackage, std::span<const FPropertyParams> InProperties,
            ETypeFlags InFlags, std::span<const FMetaDataPair> InMetaData);

    virtual UStruct* GetSuperStruct() const { return nullptr; }
    // The members this type declares itself, in table order.
    const TArray<FProperty*>& GetProperties() const { return Properties; }
    // The member called Name, in any letter case, of this type or its parents;
    // null when there is none.
    FProperty* FindPropertyByName(FName Name) const;

private:
    std::vector<FProperty> OwnedProperties;
    TArray<FProperty*> Properties;
};

struct FStructParams
{
    // "CadrelZELInfo": records are registered without their F.
    const TCHAR* Name;
    const TCHAR* Package;
    std::span<const FPropertyParams> Properties;
    ETypeFlags Flags = TF_None;
    std::span<const FMetaDataPair> MetaData = {};
};

class COREUOBJECT_API UScriptStruct : public UStruct
{
public:
    explicit UScriptStruct(const FStructParams& Params);
};

struct FClassParams
{
    // "CadrelSetting": classes are registered without their U.
    const TCHAR* Name;
    const TCHAR* Package;
    // The parent's StaticClass; null only for UObject itself.
    UClass* (*SuperAccessor)();
    // The configuration file's name ("Cadrel" for DefaultCadrel.ini); null for a
    // class that keeps no configuration.
    const TCHAR* ConfigName;
    // Makes a new object of the class (OrvReflection::ConstructObject<T>); null
    // for an abstract class, which then has no default object.
    UObject* (*Factory)();
    std::span<const FPropertyParams> Properties;
    ETypeFlags Flags = TF_None;
    std::span<const FMetaDataPair> MetaData = {};
};

class COREUOBJECT_API UClass : public UStruct
{
public:
    explicit UClass(const FClassParams& Params);
    ~UClass() override;

    UClass* GetSuperClass() const { return SuperAccessor ? SuperAccessor() : nullptr; }
    UStruct* GetSuperStruct() const override { return GetSuperClass(); }
    // True for this class and every class derived from it.
    bool IsChildOf(const UClass* Other) const;

    bool IsConfigClass() const { return !ConfigName.IsEmpty(); }
    const FString& GetConfigName() const { return ConfigName; }

    // The class default object, made on the first request when asked to; the same
    // object ever after. Null for an abstract class.
    UObject* GetDefaultObject(bool bCreateIfNeeded = true) const;

private:
    UClass* (*SuperAccessor)();
    FString ConfigName;
    UObject* (*Factory)();
    mutable std::mutex DefaultObjectMutex;
    mutable UObject* DefaultObject = nullptr;
};

// The descriptor of record T; each reflected record's module defines its
// specialisation (see UObject/Registration.h).
template <typename T> UScriptStruct* StaticStruct();

// The host's own records, for members of these types.
template <> COREUOBJECT_API UScriptStruct* StaticStruct<FGuid>();
template <> COREUOBJECT_API UScriptStruct* StaticStruct<FVector>();
