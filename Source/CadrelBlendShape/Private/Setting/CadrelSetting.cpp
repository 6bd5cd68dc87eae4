#include "Setting/CadrelSetting.h"

#include "HttpModule.h"
#include "Misc/ConfigCacheIni.h"
#include "UObject/Class.h"

namespace
{
const TCHAR* const HttpSection = TEXT("HTTP");
const TCHAR* const SoftLimitKey = TEXT("FlushSoftTimeLimitDefault");
const TCHAR* const HardLimitKey = TEXT("FlushHardTimeLimitDefault");

// What the host assumes when the engine configuration names no limit.
constexpr double DefaultSoftLimitSeconds = 2.0;
constexpr double DefaultHardLimitSeconds = 4.0;

// Long enough for a whole lipsync upload and its answer.
constexpr double RaisedSoftLimitSeconds = 1200.0;
constexpr double RaisedHardLimitSeconds = 2400.0;

// Writes Raised over a positive limit that does not exceed it; returns whether it wrote.
bool RaiseLimit(const TCHAR* Key, double DefaultSeconds, double RaisedSeconds)
{
    double Seconds = DefaultSeconds;
    GConfig->GetDouble(HttpSection, Key, Seconds, GEngineIni);
    // Written so that a limit that is not a number ("nan") is left alone too.
    if (!(Seconds > 0.0 && Seconds <= RaisedSeconds))
    {
        return false;
    }
    GConfig->SetDouble(HttpSection, Key, RaisedSeconds, GEngineIni);
    return true;
}
} // namespace

void UCadrelSetting::SaveZELSettingsConfig()
{
    SaveConfig(PF_Config, *GetSettingsFilePath(), GConfig, true);
}

void UCadrelSetting::LoadZELSettingsConfig()
{
    LoadConfig(GetClass(), *GetSettingsFilePath(), LCPF_None, nullptr);
    ResetSoftAndHardLimitSeconds();
}

void UCadrelSetting::ResetSoftAndHardLimitSeconds()
{
    const bool bSoftRaised = RaiseLimit(SoftLimitKey, DefaultSoftLimitSeconds, RaisedSoftLimitSeconds);
    const bool bHardRaised = RaiseLimit(HardLimitKey, DefaultHardLimitSeconds, RaisedHardLimitSeconds);
    if (bSoftRaised || bHardRaised)
    {
        // The manager keeps its own copy of the limits; it only sees the new
        // values once it re-reads the configuration.
        FHttpModule::Get().GetHttpManager().UpdateConfigs();
    }
}

FString UCadrelSetting::GetSettingsFilePath() const
{
    // The config name comes from the object's class, so that a derived settings
    // class with its own config name keeps its own file.
    const UClass* const Class = GetClass() ? GetClass() : StaticClass();
    FString Path = FPaths::ProjectConfigDir();
    Path.PathAppend(TEXT("Default"), 7);
    return Path + Class->GetConfigName() + TEXT(".ini");
}
