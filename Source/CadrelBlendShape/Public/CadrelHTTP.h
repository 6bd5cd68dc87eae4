#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"
#include "Interfaces/IHttpResponse.h"

// A small, general HTTP client over the host's HTTP module. It knows nothing about
// lipsync: it sends what it is given and hands every host event to its owner.
// <arpa/nameser.h> defines DELETE as a macro; the verb keeps its name all the same.
#pragma push_macro("DELETE")
#undef DELETE

namespace CadrelHTTP
{
enum class EHTTPVerbType : int32
{
    POST = 0,
    PUT = 1,
    GET = 2,
    DELETE = 3,
};

// The owner's three callbacks, with the signatures of the host request's own.
struct CADRELBLENDSHAPE_API FHTTPDelegate
{
    FHttpRequestCompleteDelegate CompleteDelegate;
    FHttpRequestProgressDelegate ProgressDelegate;
    FHttpRequestHeaderReceivedDelegate HeaderReceivedDelegate;
};

// Keeps no state about requests in flight, so any number may run on one object.
// Host requests hold it only weakly: once its owner lets it go, their remaining
// callbacks are dropped while the requests themselves run to their end.
struct CADRELBLENDSHAPE_API FHTTP : public TSharedFromThis<FHTTP>
{
    explicit FHTTP(FHTTPDelegate InDelegate);

    static TSharedPtr<FHTTP> CreateHTTPObject(FHTTPDelegate InDelegate);

    // Both answer whether the host accepted the request; the outcome arrives later.
    bool Request(const FString& URL, const FString& ContentString, const TMap<FString, FString>& Headers,
                 EHTTPVerbType Verb);
    bool Request(const FString& URL, const TArray<uint8>& Bytes, const TMap<FString, FString>& Headers,
                 EHTTPVerbType Verb);
    // Hands the bytes to the host without a copy; large bodies need not be paid twice.
    bool Request(const FString& URL, TArray<uint8>&& Bytes, const TMap<FString, FString>& Headers,
                 EHTTPVerbType Verb);

private:
    // Bytes win over text when both are given; with neither, no body is set.
    bool Request(const FString& URL, const FString& ContentString, const TArray<uint8>& Bytes,
                 const TMap<FString, FString>& Headers, EHTTPVerbType Verb);
    static FString HTTPVerbToString(EHTTPVerbType Verb);
    // A host request with everything but its body, and the start once it has one.
    TSharedRef<IHttpRequest> MakeRequest(const FString& URL, const TMap<FString, FString>& Headers,
                                         EHTTPVerbType Verb);
    bool Send(const TSharedRef<IHttpRequest>& HttpRequest);

    void OnRequestComplete(FHttpRequestPtr HttpRequest, FHttpResponsePtr HttpResponse, bool bSucceeded);
    void OnRequestProgress(FHttpRequestPtr HttpRequest, int32 BytesSent, int32 BytesReceived);
    void OnRequestHeaderReceived(FHttpRequestPtr HttpRequest, const FString& HeaderName,
                                 const FString& HeaderValue);

    FHTTPDelegate Delegate;
};
} // namespace CadrelHTTP

#pragma pop_macro("DELETE")
