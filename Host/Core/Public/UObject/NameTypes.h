#pragma once

#include "CoreTypes.h"
#include "Containers/String.h"

// The host's name: a case-insensitive identifier for types, categories and enumerators.
class CORE_API FName
{
public:
    FName() = default;
    FName(const TCHAR* Text) : Text(Text) {}
    explicit FName(const FString& Text) : Text(Text) {}

    FString ToString() const { return Text; }
    bool IsNone() const { return Text.IsEmpty(); }
    bool operator==(const FName& Other) const { return Text == Other.Text; }

private:
    FString Text;
};

inline uint32 GetTypeHash(const FName& Name)
{
    return GetTypeHash(Name.ToString());
}

inline const FName NAME_None;
