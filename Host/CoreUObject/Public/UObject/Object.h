#pragma once

#include "CoreMinimal.h"
#include "Misc/ConfigCacheIni.h"
#include "UObject/ObjectMacros.h"

class UClass;
class FProperty;

// Declares, inside a reflected class, the accessors that its registration file
// defines with ORV_IMPLEMENT_CLASS (see UObject/Registration.h).
#define ORV_DECLARE_CLASS(TClass, TSuperClass)                                                               \
public:                                                                                                      \
    using Super = TSuperClass;                                                                               \
    using ThisClass = TClass;                                                                                \
    static UClass* StaticClass();                                                                            \
    static const TCHAR* StaticConfigName();                                                                  \
    static const TCHAR* StaticPackage();

// Base of the host's reflected object classes. Objects of a reflected class are
// made by the host (the class default object), which tells each its class.
class COREUOBJECT_API UObject
{
public:
    using ThisClass = UObject;

    UObject() = default;
    virtual ~UObject() = default;
    UObject(const UObject&) = delete;
    UObject& operator=(const UObject&) = delete;

    static UClass* StaticClass();
    static const TCHAR* StaticPackage();

    // Null for an object the host did not make.
    UClass* GetClass() const { return ClassPrivate; }
    FName GetFName() const { return NamePrivate; }
    FString GetName() const { return NamePrivate.ToString(); }

    // Reads the config members of ConfigClass (this object's class when null)
    // from section "<class path>" of Filename (Config/Default<ConfigName>.ini of the
    // project when null), through GConfig. A member whose key is missing, or whose
    // text is no value of its type, keeps its value. PropertyToLoad, when given,
    // is the one member read.
    void LoadConfig(UClass* ConfigClass = nullptr, const TCHAR* Filename = nullptr,
                    uint32 PropagationFlags = LCPF_None, FProperty* PropertyToLoad = nullptr);

    // Writes every config member that has all RequiredPropertyFlags into Config's
    // copy of Filename (as for LoadConfig) and flushes that file to disk. A key whose
    // stored text is no value of its member's type is left as the user wrote it.
    // With bAllowCopyToDefaultObject the class default object takes the saved values.
    void SaveConfig(EPropertyFlags RequiredPropertyFlags = PF_Config, const TCHAR* Filename = nullptr,
                    FConfigCacheIni* Config = GConfig, bool bAllowCopyToDefaultObject = true);

private:
    friend class UClass;
    UClass* ClassPrivate = nullptr;
    FName NamePrivate;
};

// The descriptor of class T; each reflected class's module defines its
// specialisation (see UObject/Registration.h).
template <typename T> UClass* StaticClass();
template <> COREUOBJECT_API UClass* StaticClass<UObject>();

// The class default object of Class, made on first request; null for a null or
// abstract class.
COREUOBJECT_API UObject* GetDefaultObjectOf(const UClass* Class);

template <typename T> T* GetMutableDefault()
{
    return static_cast<T*>(GetDefaultObjectOf(T::StaticClass()));
}

template <typename T> const T* GetDefault()
{
    return GetMutableDefault<T>();
}
