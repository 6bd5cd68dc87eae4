#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"
#include "HttpManager.h"
#include "Interfaces/IHttpRequest.h"

#include <atomic>

// The host's HTTP module: the request manager and the module-wide time-out.
class HTTP_API FHttpModule
{
public:
    static FHttpModule& Get();

    FHttpManager& GetHttpManager() { return HttpManager; }

    // A new request, not started; never null.
    TSharedRef<IHttpRequest> CreateRequest();

    // Seconds a request may take in all, for requests that set none themselves.
    double GetHttpTimeout() const { return HttpTimeout.load(); }
    void SetHttpTimeout(double Seconds) { HttpTimeout.store(Seconds); }

private:
    FHttpModule() = default;

    FHttpManager HttpManager;
    // A request that has heard nothing for three minutes is taken as lost.
    std::atomic<double> HttpTimeout{180.0};
};
