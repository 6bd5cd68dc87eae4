#include "UObject/Object.h"

#include "UObject/Registration.h"

// The host's own reflected types: UObject, the root of every class, and the core
// records that module members may hold.
namespace
{
constexpr const TCHAR* CoreUObjectPackage = TEXT("/Script/CoreUObject");

constexpr FClassParams ObjectParams{
    TEXT("Object"), CoreUObjectPackage, nullptr, nullptr, &OrvReflection::ConstructObject<UObject>, {}};

// An identifier is used whole, through its text forms, so its words are not members.
constexpr FStructParams GuidParams{TEXT("Guid"), CoreUObjectPackage, {}, TF_ScriptType};

constexpr FPropertyParams VectorProperties[] = {
    ORV_PROPERTY(FVector, X, PF_Edit | PF_ScriptVisible, TEXT("Vector")),
    ORV_PROPERTY(FVector, Y, PF_Edit | PF_ScriptVisible, TEXT("Vector")),
    ORV_PROPERTY(FVector, Z, PF_Edit | PF_ScriptVisible, TEXT("Vector")),
};
constexpr FStructParams VectorParams{TEXT("Vector"), CoreUObjectPackage, VectorProperties, TF_ScriptType};

constexpr const FClassParams* Classes[] = {&ObjectParams};
constexpr const FStructParams* Structs[] = {&GuidParams, &VectorParams};
const FCompiledInRegistration Registration(Classes, Structs, {});
} // namespace

UClass* UObject::StaticClass()
{
    return OrvReflection::ConstructClass(ObjectParams);
}

const TCHAR* UObject::StaticPackage()
{
    return CoreUObjectPackage;
}

template <> UClass* StaticClass<UObject>()
{
    return UObject::StaticClass();
}

template <> UScriptStruct* StaticStruct<FGuid>()
{
    return OrvReflection::ConstructStruct(GuidParams);
}

template <> UScriptStruct* StaticStruct<FVector>()
{
    return OrvReflection::ConstructStruct(VectorParams);
}
