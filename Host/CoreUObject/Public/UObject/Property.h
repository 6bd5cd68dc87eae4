#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include <span>

class UObject;
class UScriptStruct;
class UEnum;

// The value kinds a reflected member can have.
enum class EPropertyKind : uint8
{
    String,
    Int32,
    Int64,
    Float,
    Double,
    Bool,
    // uint8, or an 8-bit enumeration when the type names one.
    Byte,
    // A record, FGuid and FVector included.
    Struct,
    Array,
};

// Compile-time description of a member's type. The record and enumeration are
// reached through their accessors so that a table can name a type before the
// host has built its descriptor.
struct FPropertyType
{
    EPropertyKind Kind;
    UScriptStruct* (*StructAccessor)() = nullptr;
    UEnum* (*EnumAccessor)() = nullptr;
    // The element type of an array.
    const FPropertyType* Inner = nullptr;

    UScriptStruct* GetStruct() const { return StructAccessor ? StructAccessor() : nullptr; }
    UEnum* GetEnum() const { return EnumAccessor ? EnumAccessor() : nullptr; }
};

// One metadata entry of a reflected type or member ("ToolTip", "IncludePath", ...).
struct FMetaDataPair
{
    const TCHAR* Key;
    const TCHAR* Value;
};

// One row of a record's or class's member table; see UObject/Registration.h.
struct FPropertyParams
{
    const TCHAR* Name;
    const FPropertyType* Type;
    // The member's address in a container: the record itself, or for a class
    // member the object as a UObject*.
    void* (*Access)(void* Container);
    EPropertyFlags Flags;
    const TCHAR* Category;
    std::span<const FMetaDataPair> MetaData;
};

// Descriptor of one reflected member.
class COREUOBJECT_API FProperty
{
public:
    explicit FProperty(const FPropertyParams& Params);

    FName GetFName() const { return Name; }
    FString GetName() const { return Name.ToString(); }
    const FPropertyType& GetType() const { return *Type; }
    EPropertyKind GetKind() const { return Type->Kind; }
    UScriptStruct* GetStruct() const { return Type->GetStruct(); }
    UEnum* GetEnum() const { return Type->GetEnum(); }

    EPropertyFlags GetPropertyFlags() const { return Flags; }
    bool HasAnyPropertyFlags(EPropertyFlags Mask) const { return (Flags & Mask) != PF_None; }
    bool HasAllPropertyFlags(EPropertyFlags Mask) const { return (Flags & Mask) == Mask; }
    bool IsEditable() const { return HasAnyPropertyFlags(PF_Edit); }
    bool IsScriptVisible() const { return HasAnyPropertyFlags(PF_ScriptVisible); }
    bool IsScriptReadOnly() const { return HasAnyPropertyFlags(PF_ScriptReadOnly); }
    bool IsConfig() const { return HasAnyPropertyFlags(PF_Config); }

    const FString& GetCategory() const { return Category; }
    bool HasMetaData(const FName& Key) const { return MetaData.Contains(Key); }
    // Empty text when the key is absent.
    const FString& GetMetaData(const FName& Key) const;

    // Container is a record of the owning type, or an object of the owning class.
    template <typename ValueType = void> ValueType* ContainerPtrToValuePtr(void* Container) const
    {
        return static_cast<ValueType*>(Access(Container));
    }
    template <typename ValueType = void> ValueType* ContainerPtrToValuePtr(UObject* Object) const
    {
        return ContainerPtrToValuePtr<ValueType>(static_cast<void*>(Object));
    }
    template <typename ValueType = void> const ValueType* ContainerPtrToValuePtr(const void* Container) const
    {
        return static_cast<const ValueType*>(Access(const_cast<void*>(Container)));
    }
    template <typename ValueType = void> const ValueType* ContainerPtrToValuePtr(const UObject* Object) const
    {
        return ContainerPtrToValuePtr<ValueType>(static_cast<const void*>(Object));
    }

    // The member's value in the configuration text form. False for kinds without
    // one (records, arrays).
    bool ExportValueText(const void* Container, FString& OutText) const;
    // Sets the member from its configuration text form; false, with the member
    // unchanged, when the text is not a value of the member's type.
    bool ImportValueText(const FString& Text, void* Container) const;
    // Whether ImportValueText would take Text.
    bool IsValidValueText(const FString& Text) const;

private:
    bool ImportToValuePtr(const FString& Text, void* ValuePtr) const;

    FName Name;
    const FPropertyType* Type;
    void* (*Access)(void* Container);
    EPropertyFlags Flags;
    FString Category;
    TMap<FName, FString> MetaData;
};
