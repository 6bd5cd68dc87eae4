#include "HttpManager.h"

#include "CurlHttpRequest.h"
#include "HAL/PlatformTime.h"
#include "HttpEventQueue.h"
#include "HttpLog.h"
#include "HttpTransport.h"
#include "Misc/ConfigCacheIni.h"
#include "Modules/ModuleManager.h"

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
const TCHAR* const TransportModule = TEXT("OrvaneHTTPCurl");

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
    // The transport pushes into the queue until it is destroyed, first of all.
    ~FImpl() { delete Transport.load(); }

    FHttpEventQueue Events;

    std::mutex Mutex;
    std::unordered_map<uint64, FActiveRequest> Active;
    uint64 NextRequestId = 1;
    // Owned; loaded and started with the first request, so programs that never send
    // one have neither libcurl nor its thread.
    std::atomic<IHttpTransport*> Transport{nullptr};

    // Null when the transport's library cannot be loaded; the module manager logs why.
    IHttpTransport* GetTransport();

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

IHttpTransport* FHttpManager::FImpl::GetTransport()
{
    if (IHttpTransport* const Loaded = Transport.load())
    {
        return Loaded;
    }
    // Loaded with no lock of ours held: loading takes the module manager's lock, under
    // which a module starting up may send a request. Two first requests at once may
    // both make one; the second is dropped.
    auto* const Module =
        static_cast<IHttpTransportModule*>(FModuleManager::Get().LoadModule(TransportModule));
    std::unique_ptr<IHttpTransport> Made = Module ? Module->CreateTransport(Events) : nullptr;
    IHttpTransport* Expected = nullptr;
    if (Made && Transport.compare_exchange_strong(Expected, Made.get()))
    {
        return Made.release();
    }
    return Expected;
}

uint64 FHttpManager::StartRequest(const TSharedRef<FCurlHttpRequest>& Request, FHttpTransferSpec&& Spec)
{
    IHttpTransport* const Transport = Impl->GetTransport();
    {
        std::lock_guard<std::mutex> Lock(Impl->Mutex);
        Spec.RequestId = Impl->NextRequestId++;
        Impl->Active.emplace(Spec.RequestId, FActiveRequest{Request});
    }
    const uint64 RequestId = Spec.RequestId;
    if (Transport)
    {
        Transport->Start(std::move(Spec));
        return RequestId;
    }
    FHttpEvent Failure;
    Failure.RequestId = RequestId;
    Failure.Kind = EHttpEventKind::Complete;
    Failure.Value = TEXT("the HTTP transport (module OrvaneHTTPCurl) could not be loaded");
    Impl->Events.Push(std::move(Failure));
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
    if (IHttpTransport* const Transport = Impl->Transport.load())
    {
        Transport->Cancel(RequestId);
    }
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
