#include "HttpManager.h"

#include "CurlHttpRequest.h"
#include "Misc/ConfigCacheIni.h"

#include <mutex>

namespace
{
const TCHAR* const HttpSection = TEXT("HTTP");
constexpr double DefaultFlushSoftTimeLimit = 2.0;
constexpr double DefaultFlushHardTimeLimit = 4.0;
} // namespace

struct FHttpManager::FImpl
{
    std::mutex Mutex;
    TArray<TSharedRef<FCurlHttpRequest>> Pending;
};

FHttpManager::FHttpManager() : Impl(std::make_unique<FImpl>())
{
    UpdateConfigs();
}

FHttpManager::~FHttpManager() = default;

void FHttpManager::UpdateConfigs()
{
    double Soft = DefaultFlushSoftTimeLimit;
    double Hard = DefaultFlushHardTimeLimit;
    GConfig->GetDouble(HttpSection, TEXT("FlushSoftTimeLimitDefault"), Soft, GEngineIni);
    GConfig->GetDouble(HttpSection, TEXT("FlushHardTimeLimitDefault"), Hard, GEngineIni);
    FlushSoftTimeLimit.store(Soft);
    FlushHardTimeLimit.store(Hard);
}

void FHttpManager::AddRequest(const TSharedRef<FCurlHttpRequest>& Request)
{
    std::lock_guard<std::mutex> Lock(Impl->Mutex);
    Impl->Pending.Add(Request);
}

void FHttpManager::Tick(float)
{
    TArray<TSharedRef<FCurlHttpRequest>> Done;
    {
        std::lock_guard<std::mutex> Lock(Impl->Mutex);
        std::swap(Done, Impl->Pending);
    }
    for (const TSharedRef<FCurlHttpRequest>& Request : Done)
    {
        Request->Finish(nullptr, false);
    }
}

void FHttpManager::Flush(EHttpFlushReason)
{
    Tick(0.0f);
}
