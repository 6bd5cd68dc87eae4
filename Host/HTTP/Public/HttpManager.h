#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"

#include <atomic>

// Keeps the HTTP module's requests going; here, the time limits in seconds of
// flushing them, as the engine configuration gives them.
class HTTP_API FHttpManager
{
public:
    // Starts from the engine configuration.
    FHttpManager();
    virtual ~FHttpManager() = default;
    FHttpManager(const FHttpManager&) = delete;
    FHttpManager& operator=(const FHttpManager&) = delete;

    // Re-reads FlushSoftTimeLimitDefault and FlushHardTimeLimitDefault of section
    // [HTTP] of GEngineIni from the configuration cache; a missing key gives its
    // default (2 and 4 seconds).
    void UpdateConfigs();

    double GetFlushSoftTimeLimit() const { return FlushSoftTimeLimit.load(); }
    double GetFlushHardTimeLimit() const { return FlushHardTimeLimit.load(); }

private:
    // Set by UpdateConfigs; read from the thread that flushes.
    std::atomic<double> FlushSoftTimeLimit;
    std::atomic<double> FlushHardTimeLimit;
};
