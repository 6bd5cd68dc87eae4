#include "CadrelBlendShapeType.h"

#include "Interfaces/IPluginManager.h"

namespace
{
// What the server is told when the host cannot say.
const TCHAR* const FallbackPluginVersion = TEXT("1.5.7");
const TCHAR* const FallbackCulture = TEXT("zh-CN");

FString CurrentPluginVersion()
{
    const TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindPlugin(TEXT("Cadrel"));
    return Plugin.IsValid() ? Plugin->GetDescriptor().VersionName : FString(FallbackPluginVersion);
}

FString CurrentCultureName()
{
    const FCultureRef Culture = FInternationalization::Get().GetCurrentCulture();
    return Culture->GetName().IsEmpty() ? FString(FallbackCulture) : Culture->GetName();
}
} // namespace

FCadrelIORequestMeta::FCadrelIORequestMeta()
    : PluginVersion(CurrentPluginVersion()), Local(CurrentCultureName())
{
}
