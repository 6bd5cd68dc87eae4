#include "HttpWorker.h"

namespace
{
// The longest the worker sleeps when libcurl has no timer of its own running.
constexpr int IdlePollMs = 1000;

void InitCurlOnce()
{
    static std::once_flag Once;
    std::call_once(Once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

void PushFailure(FHttpEventQueue& Events, uint64 RequestId, const TCHAR* Why)
{
    FHttpEvent Event;
    Event.RequestId = RequestId;
    Event.Kind = EHttpEventKind::Complete;
    Event.Value = Why;
    Events.Push(std::move(Event));
}
} // namespace

FHttpWorker::FHttpWorker(FHttpEventQueue& InEvents) : Events(InEvents)
{
    InitCurlOnce();
    Multi = curl_multi_init();
    if (Multi)
    {
        Thread = std::thread([this] { Run(); });
    }
}

FHttpWorker::~FHttpWorker()
{
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        bStopping = true;
    }
    if (Multi)
    {
        curl_multi_wakeup(Multi);
    }
    if (Thread.joinable())
    {
        Thread.join();
    }
    if (Multi)
    {
        curl_multi_cleanup(Multi);
    }
}

void FHttpWorker::Start(FHttpTransferSpec&& Spec)
{
    if (!Multi)
    {
        PushFailure(Events, Spec.RequestId, TEXT("libcurl could not be set up"));
        return;
    }
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        Starts.push_back(std::move(Spec));
    }
    curl_multi_wakeup(Multi);
}

void FHttpWorker::Cancel(uint64 RequestId)
{
    if (!Multi)
    {
        return;
    }
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        Cancels.push_back(RequestId);
    }
    curl_multi_wakeup(Multi);
}

void FHttpWorker::Run()
{
    while (TakeCommands())
    {
        int StillRunning = 0;
        curl_multi_perform(Multi, &StillRunning);
        FinishDoneTransfers();
        // Also returns when libcurl's own timers fall due.
        curl_multi_poll(Multi, nullptr, 0, IdlePollMs, nullptr);
    }
    for (auto& [Id, Transfer] : Running)
    {
        curl_multi_remove_handle(Multi, Transfer->GetHandle());
    }
    Running.clear();
}

bool FHttpWorker::TakeCommands()
{
    std::vector<FHttpTransferSpec> NewStarts;
    std::vector<uint64> NewCancels;
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        if (bStopping)
        {
            return false;
        }
        NewStarts.swap(Starts);
        NewCancels.swap(Cancels);
    }
    for (FHttpTransferSpec& Spec : NewStarts)
    {
        AddTransfer(std::make_unique<FCurlTransfer>(std::move(Spec), Events));
    }
    for (const uint64 RequestId : NewCancels)
    {
        RemoveTransfer(RequestId);
    }
    return true;
}

void FHttpWorker::AddTransfer(std::unique_ptr<FCurlTransfer> Transfer)
{
    CURL* Easy = Transfer->CreateHandle();
    if (!Easy || curl_multi_add_handle(Multi, Easy) != CURLM_OK)
    {
        PushFailure(Events, Transfer->GetRequestId(),
                    TEXT("not an http or https URL, or libcurl could not start it"));
        return;
    }
    const uint64 RequestId = Transfer->GetRequestId();
    Running.emplace(RequestId, std::move(Transfer));
}

void FHttpWorker::RemoveTransfer(uint64 RequestId)
{
    const auto It = Running.find(RequestId);
    if (It != Running.end())
    {
        curl_multi_remove_handle(Multi, It->second->GetHandle());
        Running.erase(It);
    }
}

void FHttpWorker::FinishDoneTransfers()
{
    int Left = 0;
    while (CURLMsg* Message = curl_multi_info_read(Multi, &Left))
    {
        if (Message->msg != CURLMSG_DONE)
        {
            continue;
        }
        FCurlTransfer* Transfer = nullptr;
        curl_easy_getinfo(Message->easy_handle, CURLINFO_PRIVATE, &Transfer);
        // Read before the handle goes: the message lives inside it.
        const CURLcode Result = Message->data.result;
        Transfer->Finish(Result);
        RemoveTransfer(Transfer->GetRequestId());
    }
}
