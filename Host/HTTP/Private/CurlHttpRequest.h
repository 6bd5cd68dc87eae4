#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"

// A request of the HTTP module, run by libcurl on the manager's worker thread.
class FCurlHttpRequest : public IHttpRequest
{
public:
    FString GetURL() const override { return URL; }
    FString GetVerb() const override { return Verb; }
    FString GetHeader(const FString& HeaderName) const override;
    TArray<FString> GetAllHeaders() const override;
    const TArray<uint8>& GetContent() const override { return Content; }
    EHttpRequestStatus GetStatus() const override { return Status; }
    float GetElapsedTime() const override { return 0.0f; }

    void SetURL(const FString& InURL) override { URL = InURL; }
    void SetVerb(const FString& InVerb) override { Verb = InVerb; }
    void SetHeader(const FString& HeaderName, const FString& HeaderValue) override;
    void SetContent(const TArray<uint8>& ContentPayload) override { Content = ContentPayload; }
    void SetContentAsString(const FString& ContentString) override;
    void SetTimeout(float InTimeoutSecs) override { TimeoutSecs = InTimeoutSecs; }

    FHttpRequestCompleteDelegate& OnProcessRequestComplete() override { return CompleteDelegate; }
    FHttpRequestProgressDelegate& OnRequestProgress() override { return ProgressDelegate; }
    FHttpRequestHeaderReceivedDelegate& OnHeaderReceived() override { return HeaderDelegate; }

    bool ProcessRequest() override;
    void CancelRequest() override;

    // Called by the manager's tick once the exchange is over.
    void Finish(FHttpResponsePtr Response, bool bSucceeded);

private:
    struct FHeader
    {
        FString Name;
        FString Value;
    };

    FString URL;
    FString Verb = TEXT("GET");
    TArray<FHeader> Headers;
    TArray<uint8> Content;
    float TimeoutSecs = -1.0f;
    EHttpRequestStatus Status = EHttpRequestStatus::NotStarted;

    FHttpRequestCompleteDelegate CompleteDelegate;
    FHttpRequestProgressDelegate ProgressDelegate;
    FHttpRequestHeaderReceivedDelegate HeaderDelegate;
};
