#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpResponse.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

enum class EHttpEventKind : uint8
{
    Header,
    Complete,
};

struct FHttpEvent
{
    uint64 RequestId = 0;
    EHttpEventKind Kind = EHttpEventKind::Header;
    // A header's name and value, or why a request failed.
    FString Name;
    FString Value;
    FHttpResponsePtr Response;
    bool bSucceeded = false;
    // When the event happened, on the thread that saw it: a completion is timed
    // when the transfer ended, not when a later tick delivers it.
    double Seconds = 0.0;
};

struct FHttpProgress
{
    uint64 RequestId = 0;
    int32 BytesSent = 0;
    int32 BytesReceived = 0;
};

// What the worker thread hands to the ticking thread. Headers and completions keep
// their order; progress keeps only the latest figures of each request, so a fast
// transfer cannot flood the queue between two ticks.
class FHttpEventQueue
{
public:
    void Push(FHttpEvent&& Event);
    void SetProgress(const FHttpProgress& Progress);

    // Moves out everything queued so far; false when nothing was.
    bool TakeAll(std::vector<FHttpEvent>& OutEvents, std::vector<FHttpProgress>& OutProgress);

    // Returns once something is queued or the time has passed.
    void WaitFor(std::chrono::milliseconds Duration);

private:
    std::mutex Mutex;
    std::condition_variable Queued;
    std::vector<FHttpEvent> Events;
    std::vector<FHttpProgress> Progress;
    // Lets an idle tick skip the lock.
    std::atomic<bool> bPending{false};
};
