#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"
#include "Interfaces/IHttpResponse.h"

class IHttpRequest;
using FHttpRequestPtr = TSharedPtr<IHttpRequest>;

// Fired once, last: the response is null when no answer arrived at all (refused,
// unresolvable, timed out, cut off); an HTTP error status is an ordinary answer.
ORV_DECLARE_DELEGATE(FHttpRequestCompleteDelegate, FHttpRequestPtr, FHttpResponsePtr, bool);
// Bytes sent and received so far.
ORV_DECLARE_DELEGATE(FHttpRequestProgressDelegate, FHttpRequestPtr, int32, int32);
// Once per response header, the value without surrounding whitespace.
ORV_DECLARE_DELEGATE(FHttpRequestHeaderReceivedDelegate, FHttpRequestPtr, const FString&, const FString&);

enum class EHttpRequestStatus : uint8
{
    NotStarted,
    Processing,
    Failed,
    Succeeded,
};

// One HTTP request. Made by FHttpModule::CreateRequest; its callbacks run only
// inside FHttpManager::Tick, on the thread that ticks.
class HTTP_API IHttpRequest : public TSharedFromThis<IHttpRequest>
{
public:
    virtual ~IHttpRequest() = default;

    virtual FString GetURL() const = 0;
    virtual FString GetVerb() const = 0;
    virtual FString GetHeader(const FString& HeaderName) const = 0;
    virtual TArray<FString> GetAllHeaders() const = 0;
    virtual const TArray<uint8>& GetContent() const = 0;
    virtual EHttpRequestStatus GetStatus() const = 0;
    // Seconds from the start to the moment the exchange ended on the HTTP worker,
    // however late a tick delivers it; while it runs, the seconds so far.
    virtual float GetElapsedTime() const = 0;

    virtual void SetURL(const FString& URL) = 0;
    virtual void SetVerb(const FString& Verb) = 0;
    // Headers go out in the order they were first set; setting a name again
    // replaces its value in place.
    virtual void SetHeader(const FString& HeaderName, const FString& HeaderValue) = 0;
    virtual void SetContent(const TArray<uint8>& ContentPayload) = 0;
    // Takes the bytes over without a copy.
    virtual void SetContent(TArray<uint8>&& ContentPayload) = 0;
    // Sent as UTF-8.
    virtual void SetContentAsString(const FString& ContentString) = 0;
    // Seconds for the whole exchange; without it the module-wide time-out holds.
    virtual void SetTimeout(float InTimeoutSecs) = 0;

    virtual FHttpRequestCompleteDelegate& OnProcessRequestComplete() = 0;
    virtual FHttpRequestProgressDelegate& OnRequestProgress() = 0;
    virtual FHttpRequestHeaderReceivedDelegate& OnHeaderReceived() = 0;

    // Whether the request was accepted: false for a second start, or a header
    // that would break the header block.
    virtual bool ProcessRequest() = 0;
    // Ends a running request; it completes at the next tick without a response.
    virtual void CancelRequest() = 0;
};
