#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"

#include <atomic>
#include <memory>

class FCurlHttpRequest;
struct FHttpTransferSpec;

enum class EHttpFlushReason : uint8
{
    Default,
    Background,
    Shutdown,
    FullFlush,
};

// Keeps the HTTP module's requests going: they run on one worker thread, and their
// callbacks are delivered by Tick on the thread that calls it.
class HTTP_API FHttpManager
{
public:
    // Starts from the engine configuration.
    FHttpManager();
    virtual ~FHttpManager();
    FHttpManager(const FHttpManager&) = delete;
    FHttpManager& operator=(const FHttpManager&) = delete;

    // Re-reads FlushSoftTimeLimitDefault and FlushHardTimeLimitDefault of section
    // [HTTP] of GEngineIni from the configuration cache; a missing key gives its
    // default (2 and 4 seconds).
    void UpdateConfigs();

    // Delivers the progress, header and completion callbacks that are due. Call it
    // from the main loop, every frame.
    void Tick(float DeltaSeconds);

    // Ticks until every request has ended or the flush time limits of section
    // [HTTP] run out.
    void Flush(EHttpFlushReason FlushReason);

    double GetFlushSoftTimeLimit() const { return FlushSoftTimeLimit.load(); }
    double GetFlushHardTimeLimit() const { return FlushHardTimeLimit.load(); }

private:
    friend class FCurlHttpRequest;

    // Keeps a started request alive until its completion has been delivered and
    // hands its exchange to the worker; returns the request's number.
    uint64 StartRequest(const TSharedRef<FCurlHttpRequest>& Request, FHttpTransferSpec&& Spec);
    // The request completes without a response at the next tick.
    void CancelRequest(uint64 RequestId);

    struct FImpl;
    std::unique_ptr<FImpl> Impl;

    // Set by UpdateConfigs; read from the thread that flushes.
    std::atomic<double> FlushSoftTimeLimit;
    std::atomic<double> FlushHardTimeLimit;
};
