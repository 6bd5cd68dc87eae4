#pragma once

#include "CoreMinimal.h"
#include "UObject/Field.h"

// One enumerator of an enumeration's table: its name without the enumeration's
// prefix ("AUDIO2FACE") and its value.
struct FEnumeratorParams
{
    const TCHAR* Name;
    int64 Value;
};

struct FEnumParams
{
    // "EBlendShapeType": enumerations keep their E.
    const TCHAR* Name;
    const TCHAR* Package;
    std::span<const FEnumeratorParams> Enumerators;
    ETypeFlags Flags = TF_None;
    std::span<const FMetaDataPair> MetaData = {};
};

// Descriptor of a scoped enumeration. Enumerators are known by their full names,
// "EBlendShapeType::AUDIO2FACE".
class COREUOBJECT_API UEnum : public UField
{
public:
    explicit UEnum(const FEnumParams& Params);

    int32 NumEnums() const { return Enumerators.Num(); }
    // NAME_None and INDEX_NONE for an index out of range.
    FName GetNameByIndex(int32 Index) const;
    int64 GetValueByIndex(int32 Index) const;

    // The full name of the first enumerator with Value, NAME_None when there is none.
    FName GetNameByValue(int64 Value) const;
    // The name without the enumeration's prefix, empty when there is none.
    FString GetNameStringByValue(int64 Value) const;
    // The value of an enumerator named in full or without the prefix, in any
    // letter case; INDEX_NONE when there is none.
    int64 GetValueByName(const FName& InName) const;

    // Finds TestName, a full enumerator name in any letter case, among the
    // enumerations of PackageName (of every package when it is NAME_None).
    // Returns its value, or INDEX_NONE when no enumeration has it.
    static int64 LookupEnumName(FName PackageName, FName TestName,
                                EFindFirstObjectOptions Options = EFindFirstObjectOptions::None,
                                UEnum** OutMatchingEnum = nullptr);

private:
    struct FEnumerator
    {
        FName FullName;
        FString ShortName;
        int64 Value;
    };
    TArray<FEnumerator> Enumerators;
};

// The descriptor of enumeration E; each reflected enumeration's module defines
// its specialisation (see UObject/Registration.h).
template <typename E> UEnum* StaticEnum();
