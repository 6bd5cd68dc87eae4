#include "TestTypes.h"

#include "UObject/Registration.h"

namespace
{
constexpr const TCHAR* Package = TEXT("/Script/OrvaneTests");
constexpr const TCHAR* Category = TEXT("Test");
constexpr EPropertyFlags ReadWrite = PF_Edit | PF_ScriptVisible;
constexpr FMetaDataPair HeaderMeta[] = {{TEXT("ModuleRelativePath"), TEXT("TestTypes.h")}};

constexpr FEnumeratorParams ColourEnumerators[] = {
    ORV_ENUMERATOR(ETestColour, Red),
    ORV_ENUMERATOR(ETestColour, Green),
    ORV_ENUMERATOR(ETestColour, Blue),
};
constexpr FEnumParams ColourParams{TEXT("ETestColour"), Package, ColourEnumerators, TF_ScriptType,
                                   HeaderMeta};

constexpr FEnumeratorParams QueuedEnumerators[] = {ORV_ENUMERATOR(ETestQueued, Only)};
constexpr FEnumParams QueuedParams{TEXT("ETestQueued"), Package, QueuedEnumerators};

constexpr FPropertyParams InnerProperties[] = {ORV_PROPERTY(FTestInner, Weight, ReadWrite, Category)};
constexpr FStructParams InnerParams{TEXT("TestInner"), Package, InnerProperties, TF_ScriptType};

constexpr EPropertyFlags ConfigFlags = PF_Edit | PF_Config;
constexpr FPropertyParams SettingsProperties[] = {
    ORV_PROPERTY(UTestSettings, Url, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, Stamp, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, Ratio, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, Scale, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, bEnabled, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, Colour, ConfigFlags, Category),
    ORV_PROPERTY(UTestSettings, Transient, PF_Edit, Category),
};
constexpr FClassParams SettingsParams{TEXT("TestSettings"),
                                      Package,
                                      &StaticClass<UObject>,
                                      TEXT("OrvaneTest"),
                                      &OrvReflection::ConstructObject<UTestSettings>,
                                      SettingsProperties,
                                      TF_None,
                                      HeaderMeta};

constexpr const FClassParams* Classes[] = {&SettingsParams};
constexpr const FStructParams* Structs[] = {&InnerParams};
constexpr const FEnumParams* Enums[] = {&ColourParams, &QueuedParams};
const FCompiledInRegistration Registration(Classes, Structs, Enums);
} // namespace

ORV_IMPLEMENT_ENUM(ETestColour, ColourParams)
ORV_IMPLEMENT_ENUM(ETestQueued, QueuedParams)
ORV_IMPLEMENT_STRUCT(FTestInner, InnerParams)
ORV_IMPLEMENT_CLASS(UTestSettings, SettingsParams)
