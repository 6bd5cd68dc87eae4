#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"
#include "UObject/Property.h"

#include <span>

// What every reflected type shares: its name within its package, its flags and
// its metadata. Descriptors are built once by the host and never copied.
class COREUOBJECT_API UField
{
public:
    UField(const TCHAR* InName, const TCHAR* InPackage, ETypeFlags InFlags,
           std::span<const FMetaDataPair> InMetaData);
    virtual ~UField() = default;
    UField(const UField&) = delete;
    UField& operator=(const UField&) = delete;

    FName GetFName() const { return Name; }
    FString GetName() const { return Name.ToString(); }
    // "/Script/<Module>", the package the type was registered in.
    const FString& GetPackageName() const { return Package; }
    // "/Script/<Module>.<Name>"; configuration sections of classes are named so.
    FString GetPathName() const { return Package + TEXT(".") + Name.ToString(); }

    ETypeFlags GetTypeFlags() const { return Flags; }
    bool HasAnyTypeFlags(ETypeFlags Mask) const { return (Flags & Mask) != 0; }

    bool HasMetaData(const FName& Key) const { return MetaData.Contains(Key); }
    // Empty text when the key is absent.
    const FString& GetMetaData(const FName& Key) const;

private:
    FName Name;
    FString Package;
    ETypeFlags Flags;
    TMap<FName, FString> MetaData;
};
