#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"
#include "HttpManager.h"
#include "Interfaces/IHttpRequest.h"

#include <atomic>

// Fired by CreateRequest with each new request, on the thread that created it.
ORV_DECLARE_DELEGATE(FHttpRequestCreatedDelegate, const TSharedRef<IHttpRequest>&);

// The host's HTTP module: the request manager and the module-wide time-out.
class HTTP_API FHttpModule
{
public:
    static FHttpModule& Get();

    FHttpManager& GetHttpManager() { return HttpManager; }

    // A new request, not started; never null.
    TSharedRef<IHttpRequest> CreateRequest();

    // Lets a host program follow the requests that modules make on its behalf: a
    // module's request that ends without a response tells its caller nothing, but
    // the request's own status does. Bind and create on the same thread.
    FHttpRequestCreatedDelegate& OnRequestCreated() { return RequestCreatedDelegate; }

    // Seconds a request may take in all, for requests that set none themselves.
    double GetHttpTimeout() const { return HttpTimeout.load(); }
    void SetHttpTimeout(double Seconds) { HttpTimeout.store(Seconds); }

private:
    FHttpModule() = default;

    FHttpManager HttpManager;
    FHttpRequestCreatedDelegate RequestCreatedDelegate;
    // A request that has heard nothing for three minutes is taken as lost.
    std::atomic<double> HttpTimeout{180.0};
};
