#include "UObject/Enum.h"

#include "Registry.h"

UEnum::UEnum(const FEnumParams& Params) : UField(Params.Name, Params.Package, Params.Flags, Params.MetaData)
{
    const FString Prefix = GetName() + TEXT("::");
    for (const FEnumeratorParams& Enumerator : Params.Enumerators)
    {
        Enumerators.Add(
            FEnumerator{FName(Prefix + Enumerator.Name), FString(Enumerator.Name), Enumerator.Value});
    }
}

FName UEnum::GetNameByIndex(int32 Index) const
{
    return Enumerators.IsValidIndex(Index) ? Enumerators[Index].FullName : NAME_None;
}

int64 UEnum::GetValueByIndex(int32 Index) const
{
    return Enumerators.IsValidIndex(Index) ? Enumerators[Index].Value : INDEX_NONE;
}

FName UEnum::GetNameByValue(int64 Value) const
{
    for (const FEnumerator& Enumerator : Enumerators)
    {
        if (Enumerator.Value == Value)
        {
            return Enumerator.FullName;
        }
    }
    return NAME_None;
}

FString UEnum::GetNameStringByValue(int64 Value) const
{
    for (const FEnumerator& Enumerator : Enumerators)
    {
        if (Enumerator.Value == Value)
        {
            return Enumerator.ShortName;
        }
    }
    return FString();
}

int64 UEnum::GetValueByName(const FName& InName) const
{
    const FString Text = InName.ToString();
    for (const FEnumerator& Enumerator : Enumerators)
    {
        if (Enumerator.FullName == InName || Enumerator.ShortName == Text)
        {
            return Enumerator.Value;
        }
    }
    return INDEX_NONE;
}

int64 UEnum::LookupEnumName(FName PackageName, FName TestName, EFindFirstObjectOptions,
                            UEnum** OutMatchingEnum)
{
    for (UEnum* Enum : FReflectionRegistry::Get().GetAllEnums())
    {
        if (!PackageName.IsNone() && !(Enum->GetPackageName() == PackageName.ToString()))
        {
            continue;
        }
        for (const FEnumerator& Enumerator : Enum->Enumerators)
        {
            if (Enumerator.FullName == TestName)
            {
                if (OutMatchingEnum)
                {
                    *OutMatchingEnum = Enum;
                }
                return Enumerator.Value;
            }
        }
    }
    if (OutMatchingEnum)
    {
        *OutMatchingEnum = nullptr;
    }
    if (OutMatchingEnum)
    {
        *OutMatchingEnum = nullptr;
    }
    return INDEX_NONE;
}
