#include "CadrelJson.h"

#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

namespace
{
// The hosted lipsync service. The engine configuration can point the module at
// another server ([Cadrel] CloudBaseURL in DefaultEngine.ini), so that the
// reference server and tests can stand in for the cloud.
const TCHAR* const DefaultCloudBaseURL = TEXT("https://api.virethio.com");

// Read at every call, like A2FURL, so that a changed configuration applies to the
// next request. Trailing slashes are dropped because the paths bring their own,
// and an empty value counts as unset, since no request could reach a bare path.
FString CloudBaseURL()
{
    FString URL;
    if (GConfig)
    {
        GConfig->GetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), URL, GEngineIni);
    }
    while (URL.EndsWith(TEXT("/")))
    {
        URL.RemoveAt(URL.Len() - 1);
    }
    return URL.IsEmpty() ? FString(DefaultCloudBaseURL) : URL;
}

// A2FURL comes from the settings' default object on every call, so an edited
// setting applies to the next request without a restart.
FString Audio2FaceEndpoint(const FString& Path)
{
    const UCadrelSetting* Settings = GetDefault<UCadrelSetting>();
    if (!Settings)
    {
        return FString();
    }
    FString URL = Settings->A2FURL;
    URL.PathAppend(Path);
    return URL;
}
} // namespace

FString CadrelJson::GetBlendShapeURL(EBlendShapeType InType)
{
    switch (InType)
    {
    case EBlendShapeType::AUDIO2FACE:
        return Audio2FaceEndpoint(TEXT("bs/api/v1/zel"));
    case EBlendShapeType::VIRETHIO:
        return CloudBaseURL() + TEXT("/dh/api/v2/zel");
    }
    return FString();
}

FString CadrelJson::GetStreamURL(EBlendShapeType InType)
{
    switch (InType)
    {
    case EBlendShapeType::AUDIO2FACE:
        return Audio2FaceEndpoint(TEXT("live/api/v1/zel_stream"));
    case EBlendShapeType::VIRETHIO:
        return CloudBaseURL() + TEXT("/dh/api/v1/zel_stream");
    }
    return FString();
}
