#pragma once

// What a module's reflection registration file uses: member and enumerator
// table rows, the accessor definitions and the deferred registration that static
// initialisation queues. The host builds each descriptor from its table on the
// first request and returns the same one ever after.

#include "CoreMinimal.h"
#include "UObject/Class.h"
#include "UObject/Enum.h"
#include "UObject/Object.h"
#include "UObject/Property.h"

#include <span>
#include <type_traits>

namespace OrvReflection
{
// The compile-time type description of a member of type T; a member of a type
// without one does not compile.
template <typename T> struct TPropertyTypeOf;

#define ORV_SCALAR_PROPERTY_TYPE(CppType, TypeKind)                                                          \
    template <> struct TPropertyTypeOf<CppType>                                                              \
    {                                                                                                        \
        static constexpr FPropertyType Value{EPropertyKind::TypeKind};                                       \
    }
ORV_SCALAR_PROPERTY_TYPE(FString, String);
ORV_SCALAR_PROPERTY_TYPE(int32, Int32);
ORV_SCALAR_PROPERTY_TYPE(int64, Int64);
ORV_SCALAR_PROPERTY_TYPE(float, Float);
ORV_SCALAR_PROPERTY_TYPE(double, Double);
ORV_SCALAR_PROPERTY_TYPE(bool, Bool);
ORV_SCALAR_PROPERTY_TYPE(uint8, Byte);
#undef ORV_SCALAR_PROPERTY_TYPE

template <typename T>
requires std::is_enum_v<T>
struct TPropertyTypeOf<T>
{
    static_assert(sizeof(T) == 1, "reflected enumerations are 8-bit");
    static constexpr FPropertyType Value{EPropertyKind::Byte, nullptr, &StaticEnum<T>};
};

// Any other class type is a record: FGuid, FVector or one with a StaticStruct.
template <typename T>
requires std::is_class_v<T>
struct TPropertyTypeOf<T>
{
    static constexpr FPropertyType Value{EPropertyKind::Struct, &StaticStruct<T>};
};

template <typename T> struct TPropertyTypeOf<TArray<T>>
{
    static constexpr FPropertyType Value{EPropertyKind::Array, nullptr, nullptr, &TPropertyTypeOf<T>::Value};
};

template <typename> struct TMemberTraits;
template <typename OwnerType, typename ValueType> struct TMemberTraits<ValueType OwnerType::*>
{
    using Owner = OwnerType;
    using Value = ValueType;
};

// A class member's container is the object as a UObject*, a record member's the
// record itself.
template <auto Member> void* AccessMember(void* Container)
{
    using FOwner = typename TMemberTraits<decltype(Member)>::Owner;
    if constexpr (std::is_base_of_v<UObject, FOwner>)
    {
        return &(static_cast<FOwner*>(static_cast<UObject*>(Container))->*Member);
    }
    else
    {
        return &(static_cast<FOwner*>(Container)->*Member);
    }
}

template <auto Member>
constexpr FPropertyParams MakeProperty(const TCHAR* Name, EPropertyFlags Flags, const TCHAR* Category,
                                       std::span<const FMetaDataPair> MetaData = {})
{
    using FValue = typename TMemberTraits<decltype(Member)>::Value;
    return FPropertyParams{Name,    &TPropertyTypeOf<FValue>::Value, &AccessMember<Member>, Flags, Category,
                           MetaData};
}

template <typename T> UObject* ConstructObject()
{
    return new T();
}

// The descriptor built from Params: on the first call for these Params it is
// made (after every queued registration), later calls return the same one.
COREUOBJECT_API UScriptStruct* ConstructStruct(const FStructParams& Params);
COREUOBJECT_API UEnum* ConstructEnum(const FEnumParams& Params);
COREUOBJECT_API UClass* ConstructClass(const FClassParams& Params);
} // namespace OrvReflection

// Queues a module's types at static initialisation; they are built before the
// first descriptor request is answered, so that by-name lookups see them all.
// The tables must outlive the process (static storage).
class COREUOBJECT_API FCompiledInRegistration
{
public:
    FCompiledInRegistration(std::span<const FClassParams* const> Classes,
                            std::span<const FStructParams* const> Structs,
                            std::span<const FEnumParams* const> Enums);
};

// One member row: ORV_PROPERTY(FOwner, Member, Flags, TEXT("Category")[, MetaDataArray]).
// The member's type comes from its declaration.
#define ORV_PROPERTY(Owner, Member, Flags, Category, ...)                                                    \
    OrvReflection::MakeProperty<&Owner::Member>(TEXT(#Member), Flags, Category __VA_OPT__(, ) __VA_ARGS__)

// One enumerator row, its value taken from the enumeration itself.
#define ORV_ENUMERATOR(Enum, Enumerator)                                                                     \
    FEnumeratorParams                                                                                        \
    {                                                                                                        \
        TEXT(#Enumerator), static_cast<int64>(Enum::Enumerator)                                              \
    }

// Accessor definitions, one line per type, next to the type's table.
#define ORV_IMPLEMENT_STRUCT(Type, Params)                                                                   \
    UScriptStruct* Type::StaticStruct()                                                                      \
    {                                                                                                        \
        return OrvReflection::ConstructStruct(Params);                                                       \
    }                                                                                                        \
    template <> UScriptStruct* StaticStruct<Type>()                                                          \
    {                                                                                                        \
        return OrvReflection::ConstructStruct(Params);                                                       \
    }

#define ORV_IMPLEMENT_ENUM(Type, Params)                                                                     \
    template <> UEnum* StaticEnum<Type>()                                                                    \
    {                                                                                                        \
        return OrvReflection::ConstructEnum(Params);                                                         \
    }

#define ORV_IMPLEMENT_CLASS(Type, Params)                                                                    \
    UClass* Type::StaticClass()                                                                              \
    {                                                                                                        \
        return OrvReflection::ConstructClass(Params);                                                        \
    }                                                                                                        \
    template <> UClass* StaticClass<Type>()                                                                  \
    {                                                                                                        \
        return OrvReflection::ConstructClass(Params);                                                        \
    }                                                                                                        \
    const TCHAR* Type::StaticConfigName()                                                                    \
    {                                                                                                        \
        return (Params).ConfigName ? (Params).ConfigName : TEXT("");                                         \
    }                                                                                                        \
    const TCHAR* Type::StaticPackage()                                                                       \
    {                                                                                                        \
        return (Params).Package;                                                                             \
    }
