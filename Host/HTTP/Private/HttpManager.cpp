#include "HttpManager.h"

#include "CurlHttpRequest.h"
#include "HAL/PlatformTime.h"
#include "HttpEventQueue.h"
#include "HttpLog.h"
#include "HttpWorker.h"
#include "Misc/ConfigCacheIni.h"

#include <mutex>
#include <unordered_map>
#include <vector>

namespace
{
const TCHAR* const HttpSection = TEXT("HTTP");
constexpr double DefaultFlushSoftTimeLimit = 2.0;
constexpr double DefaultFlushHardTimeLimit = 4.0;
// How long Flush sleeps between ticks when nothing arrives.
constexpr std::chrono::milliseconds FlushWait{10};

struct FActiveRequest
{
    TSharedRef<FCurlHttpRequest> Request;
    bool bCancelled = false;
};

// One callback to make, found under the lock and made after it.
struct FDelivery
{
    TSharedRef<FCurlHttpRequest> Request;
    const FHttpEvent* Event = nullptr;
    const FHttpProgress* Progress = nullptr;
    bool bCancelled = false;
};
} // namespace

struct FHttpManager::FImpl
{
    // Declared before the worker, which pushes into it until it is joined.
    FHttpEventQueue Events;

    std::mutex Mutex;
    std::unordered_map<uint64, FActiveRequest> Active;
    uint64 NextRequestId = 1;
    // Started with the first request, so programs that never send one have no thread.
    std::unique_ptr<FHttpWorker> Worker;

    std::vector<FDelivery> Resolve(const std::vector<FHttpEvent>& NewEvents,
                                   const std::vector<FHttpProgress>& NewProgress);
    std::vector<uint64> ActiveIds()
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        std::vector<uint64> Ids;
        for (const auto& [RequestId, Entry] : Active)
        {
            Ids.push_back(RequestId);
        }
        return Ids;
    }
    bool HasActive()
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        return !Active.empty();
    }
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

uint64 FHttpManager::StartRequest(const TSharedRef<FCurlHttpRequest>& Request, FCurlTransferSpec&& Spec)
{
    FHttpWorker* Worker = nullptr;
    {
        std::lock_guard<std::mutex> Lock(Impl->Mutex);
        Spec.RequestId = Impl->NextRequestId++;
        Impl->Active.emplace(Spec.RequestId, FActiveRequest{Request});
        if (!Impl->Worker)
        {
            Impl->Worker = std::make_unique<FHttpWorker>(Impl->Events);
        }
        Worker = Impl->Worker.get();
    }
    const uint64 RequestId = Spec.RequestId;
    Worker->Start(std::move(Spec));
    return RequestId;
}

void FHttpManager::CancelRequest(uint64 RequestId)
{
    {
        std::lock_guard<std::mutex> Lock(Impl->Mutex);
        const auto It = Impl->Active.find(RequestId);
        if (It == Impl->Active.end() || It->second.bCancelled)
        {
            return;
        }
        It->second.bCancelled = true;
    }
    // The completion comes from here rather than from the worker, so that the next
    // tick delivers it whatever the worker is doing.
    FHttpEvent Event;
    Event.RequestId = RequestId;
    Event.Kind = EHttpEventKind::Complete;
    Impl->Events.Push(std::move(Event));
    Impl->Worker->Cancel(RequestId);
}

std::vector<FDelivery> FHttpManager::FImpl::Resolve(const std::vector<FHttpEvent>& NewEvents,
                                                    const std::vector<FHttpProgress>& NewProgress)
{
    std::vector<FDelivery> Deliveries;
    std::lock_guard<std::mutex> Lock(Mutex);
    // Progress first: a request that completes in this batch reports its last
    // figures before its completion.
    for (const FHttpProgress& Progress : NewProgress)
    {
        const auto It = Active.find(Progress.RequestId);
        if (It != Active.end() && !It->second.bCancelled)
        {
            Deliveries.push_back(FDelivery{It->second.Request, nullptr, &Progress});
        }
    }
    for (const FHttpEvent& Event : NewEvents)
    {
        const auto It = Active.find(Event.RequestId);
        if (It == Active.end() || (It->second.bCancelled && Event.Kind != EHttpEventKind::Complete))
        {
            continue;
        }
        Deliveries.push_back(FDelivery{It->second.Request, &Event, nullptr, It->second.bCancelled});
        if (Event.Kind == EHttpEventKind::Complete)
        {
            Active.erase(It);
        }
    }
    return Deliveries;
}

void FHttpManager::Tick(float)
{
    std::vector<FHttpEvent> NewEvents;
    std::vector<FHttpProgress> NewProgress;
    if (!Impl->Events.TakeAll(NewEvents, NewProgress))
    {
        return;
    }
    for (const FDelivery& Delivery : Impl->Resolve(NewEvents, NewProgress))
    {
        FCurlHttpRequest& Request = *Delivery.Request;
        if (Delivery.Progress)
        {
            Request.DeliverProgress(Delivery.Progress->BytesSent, Delivery.Progress->BytesReceived);
        }
        else if (Delivery.Event->Kind == EHttpEventKind::Header)
        {
            Request.DeliverHeader(Delivery.Event->Name, Delivery.Event->Value);
        }
        else if (Delivery.bCancelled)
        {
            Request.DeliverCompletion(nullptr, false, Delivery.Event->Seconds);
        }
        else
        {
            if (!Delivery.Event->bSucceeded)
            {
                ORV_LOG(LogHttp, Log, TEXT("Request to %s failed: %s"), *Request.GetURL(),
                        *Delivery.Event->Value);
            }
            Request.DeliverCompletion(Delivery.Event->Response, Delivery.Event->bSucceeded,
                                      Delivery.Event->Seconds);
        }
    }
}

void FHttpManager::Flush(EHttpFlushReason)
{
    // A limit of 0 or less is no limit; the requests' own time-outs still end them.
    const double Soft = GetFlushSoftTimeLimit();
    const double Hard = GetFlushHardTimeLimit();
    const double Start = FPlatformTime::Seconds();
    bool bWarned = false;
    for (Tick(0.0f); Impl->HasActive(); Tick(0.0f))
    {
        const double Elapsed = FPlatformTime::Seconds() - Start;
        if (Hard > 0.0 && Elapsed >= Hard)
        {
            for (const uint64 RequestId : Impl->ActiveIds())
            {
                CancelRequest(RequestId);
            }
            Tick(0.0f);
            return;
        }
        if (Soft > 0.0 && Elapsed >= Soft && !bWarned)
        {
            ORV_LOG(LogHttp, Warning, TEXT("Flush is still waiting for requests after %.1f seconds."),
                    Elapsed);
            bWarned = true;
        }
        Impl->Events.WaitFor(FlushWait);
    }
}
