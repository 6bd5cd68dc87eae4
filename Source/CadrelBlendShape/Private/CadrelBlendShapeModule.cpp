#include "CadrelBlendShapeModule.h"

#include "CadrelBlendShapeLog.h"
#include "Setting/CadrelSetting.h"

ORV_DEFINE_LOG_CATEGORY(CadrelBlendShapeLog);

void FCadrelBlendShapeModule::StartupModule()
{
    UCadrelSetting* const Settings = GetMutableDefault<UCadrelSetting>();
    if (!Settings)
    {
        return;
    }
    Settings->LoadZELSettingsConfig();
    Settings->SaveZELSettingsConfig();
}

IModuleInterface* InitializeModule()
{
    return new FCadrelBlendShapeModule();
}
