#pragma once

#include "CoreMinimal.h"
#include "UObject/Object.h"

// The plug-in's persistent settings. The class default object is the one that
// matters: the module loads and saves it at start-up, and the endpoint mapping
// reads A2FURL from it.
class CADRELBLENDSHAPE_API UCadrelSetting : public UObject
{
    ORV_DECLARE_CLASS(UCadrelSetting, UObject)

public:
    // Base URL of the local Audio2Face bridge.
    FString A2FURL = TEXT("http://127.0.0.1:9011");
    // The user's access token for the cloud lipsync service.
    FString Token;
    // Stored beside the token; this module never interprets it.
    int64 TimeStamp = 0;

    // Writes the three members to Config/Default<ConfigName>.ini of the project.
    virtual void SaveZELSettingsConfig();
    // Reads the three members from the same file, then raises the HTTP flush limits.
    virtual void LoadZELSettingsConfig();

protected:
    // Long lipsync uploads must survive the host flushing its HTTP requests, so
    // the engine's [HTTP] flush limits are raised to at least 1200 s (soft) and
    // 2400 s (hard). A limit that is zero or less, or already higher, was chosen
    // on purpose and is left alone.
    void ResetSoftAndHardLimitSeconds();

private:
    FString GetSettingsFilePath() const;
};
template <> CADRELBLENDSHAPE_API UClass* StaticClass<UCadrelSetting>();
