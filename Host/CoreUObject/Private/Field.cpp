#include "UObject/Field.h"

namespace
{
const FString EmptyMetaData;
}

UField::UField(const TCHAR* InName, const TCHAR* InPackage, ETypeFlags InFlags,
               std::span<const FMetaDataPair> InMetaData)
    : Name(InName), Package(InPackage), Flags(InFlags)
{
    for (const FMetaDataPair& Pair : InMetaData)
    {
        MetaData.Add(FName(Pair.Key), FString(Pair.Value));
    }
}

const FString& UField::GetMetaData(const FName& Key) const
{
    const FString* Found = MetaData.Find(Key);
    return Found ? *Found : EmptyMetaData;
}
