// Reflection table of the settings class of Setting/CadrelSetting.h.

#include "Setting/CadrelSetting.h"

#include "CadrelBlendShape.init.gen.h"

namespace
{
using namespace CadrelBlendShapeReflection;

constexpr FMetaDataPair SettingHeader[] = {
    {TEXT("IncludePath"), TEXT("Setting/CadrelSetting.h")},
    {TEXT("ModuleRelativePath"), TEXT("Public/Setting/CadrelSetting.h")},
};
constexpr FMetaDataPair NoToolTip[] = {{TEXT("ToolTip"), TEXT("")}};

// Settings are the project's, kept in its configuration file; scripts do not touch them.
constexpr FPropertyParams SettingProperties[] = {
    ORV_PROPERTY(UCadrelSetting, A2FURL, PanelConfig, TEXT("Cadrel"), NoToolTip),
    ORV_PROPERTY(UCadrelSetting, Token, PanelConfig, TEXT("Cadrel"), NoToolTip),
    ORV_PROPERTY(UCadrelSetting, TimeStamp, PanelConfig, TEXT("Cadrel"), NoToolTip),
};
constexpr FClassParams SettingParams{TEXT("CadrelSetting"),
                                     Package,
                                     &StaticClass<UObject>,
                                     TEXT("Cadrel"),
                                     &OrvReflection::ConstructObject<UCadrelSetting>,
                                     SettingProperties,
                                     TF_None,
                                     SettingHeader};

constexpr const FClassParams* Classes[] = {&SettingParams};
const FCompiledInRegistration Registration(Classes, {}, {});
} // namespace

ORV_IMPLEMENT_CLASS(UCadrelSetting, SettingParams)

// Entry points through which other modules' generated code reaches the class.
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting()
{
    return UCadrelSetting::StaticClass();
}

// The host builds descriptors on request, so there is no separate registering step to skip.
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting_NoRegister()
{
    return UCadrelSetting::StaticClass();
}
