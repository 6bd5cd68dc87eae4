#pragma once

#include "CoreMinimal.h"
#include "HttpHeaderList.h"
#include "Interfaces/IHttpRequest.h"

#include <memory>

struct FHttpTransferSpec;

// A request of the HTTP module. Set up and delivered to on the ticking thread; the
// exchange itself runs on the manager's worker from a copy taken at the start.
class FCurlHttpRequest : public IHttpRequest
{
public:
    FCurlHttpRequest();

    FString GetURL() const override { return URL; }
    FString GetVerb() const override { return Verb; }
    FString GetHeader(const FString& HeaderName) const override;
    TArray<FString> GetAllHeaders() const override;
    const TArray<uint8>& GetContent() const override { return *Content; }
    EHttpRequestStatus GetStatus() const override { return Status; }
    float GetElapsedTime() const override;

    void SetURL(const FString& InURL) override { URL = InURL; }
    void SetVerb(const FString& InVerb) override { Verb = InVerb; }
    void SetHeader(const FString& HeaderName, const FString& HeaderValue) override;
    void SetContent(const TArray<uint8>& ContentPayload) override;
    void SetContent(TArray<uint8>&& ContentPayload) override;
    void SetContentAsString(const FString& ContentString) override;
    void SetTimeout(float InTimeoutSecs) override { TimeoutSecs = InTimeoutSecs; }

    FHttpRequestCompleteDelegate& OnProcessRequestComplete() override { return CompleteDelegate; }
    FHttpRequestProgressDelegate& OnRequestProgress() override { return ProgressDelegate; }
    FHttpRequestHeaderReceivedDelegate& OnHeaderReceived() override { return HeaderDelegate; }

    bool ProcessRequest() override;
    void CancelRequest() override;

    // Called by the manager's tick.
    void DeliverProgress(int32 BytesSent, int32 BytesReceived);
    void DeliverHeader(const FString& Name, const FString& Value);
    void DeliverCompletion(const FHttpResponsePtr& Response, bool bSucceeded, double CompletedSeconds);

private:
    // Why the request cannot go out as it is, or empty text.
    FString FindMalformedPart() const;
    FHttpTransferSpec MakeTransferSpec() const;

    FString URL;
    FString Verb;
    TArray<FHttpHeader> Headers;
    // Replaced, never changed in place, so a running exchange can keep reading it.
    std::shared_ptr<const TArray<uint8>> Content;
    float TimeoutSecs = 0.0f;

    EHttpRequestStatus Status = EHttpRequestStatus::NotStarted;
    uint64 RequestId = 0;
    double StartSeconds = 0.0;
    double EndSeconds = 0.0;

    FHttpRequestCompleteDelegate CompleteDelegate;
    FHttpRequestProgressDelegate ProgressDelegate;
    FHttpRequestHeaderReceivedDelegate HeaderDelegate;
};
