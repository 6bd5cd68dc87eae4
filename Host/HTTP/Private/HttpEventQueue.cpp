#include "HttpEventQueue.h"

#include <algorithm>

void FHttpEventQueue::Push(FHttpEvent&& Event)
{
    Event.Seconds = FPlatformTime::Seconds();
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        Events.push_back(std::move(Event));
        bPending.store(true, std::memory_order_release);
    }
    Queued.notify_all();
}

void FHttpEventQueue::SetProgress(const FHttpProgress& Update)
{
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        const auto It = std::find_if(Progress.begin(), Progress.end(),
                                     [&Update](const FHttpProgress& Entry)
                                     { return Entry.RequestId == Update.RequestId; });
        if (It == Progress.end())
        {
            Progress.push_back(Update);
        }
        else
        {
            *It = Update;
        }
        bPending.store(true, std::memory_order_release);
    }
    Queued.notify_all();
}

bool FHttpEventQueue::TakeAll(std::vector<FHttpEvent>& OutEvents, std::vector<FHttpProgress>& OutProgress)
{
    if (!bPending.load(std::memory_order_acquire))
    {
        return false;
    }
    std::lock_guard<std::mutex> Lock(Mutex);
    OutEvents.swap(Events);
    OutProgress.swap(Progress);
    Events.clear();
    Progress.clear();
    bPending.store(false, std::memory_order_release);
    return !OutEvents.empty() || !OutProgress.empty();
}

void FHttpEventQueue::WaitFor(std::chrono::milliseconds Duration)
{
    std::unique_lock<std::mutex> Lock(Mutex);
    Queued.wait_for(Lock, Duration, [this] { return bPending.load(std::memory_order_relaxed); });
}
