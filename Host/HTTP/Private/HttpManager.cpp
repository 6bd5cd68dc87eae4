#include "HttpManager.h"

#include "Misc/ConfigCacheIni.h"

namespace
{
const TCHAR* const HttpSection = TEXT("HTTP");
constexpr double DefaultFlushSoftTimeLimit = 2.0;
constexpr double DefaultFlushHardTimeLimit = 4.0;
} // namespace

FHttpManager::FHttpManager()
{
    UpdateConfigs();
}

void FHttpManager::UpdateConfigs()
{
    double Soft = DefaultFlushSoftTimeLimit;
    double Hard = DefaultFlushHardTimeLimit;
    GConfig->GetDouble(HttpSection, TEXT("FlushSoftTimeLimitDefault"), Soft, GEngineIni);
    GConfig->GetDouble(HttpSection, TEXT("FlushHardTimeLimitDefault"), Hard, GEngineIni);
    FlushSoftTimeLimit.store(Soft);
    FlushHardTimeLimit.store(Hard);
}
