#include "CadrelHTTP.h"

#include "HttpModule.h"

namespace CadrelHTTP
{
namespace
{
// Every request gets two minutes, whatever the module-wide time-out says.
constexpr float RequestTimeoutSeconds = 120.0f;
} // namespace

FHTTP::FHTTP(FHTTPDelegate InDelegate) : Delegate(std::move(InDelegate)) {}

TSharedPtr<FHTTP> FHTTP::CreateHTTPObject(FHTTPDelegate InDelegate)
{
    return MakeShared<FHTTP>(std::move(InDelegate)).ToSharedPtr();
}

bool FHTTP::Request(const FString& URL, const FString& ContentString, const TMap<FString, FString>& Headers,
                    EHTTPVerbType Verb)
{
    return Request(URL, ContentString, TArray<uint8>(), Headers, Verb);
}

bool FHTTP::Request(const FString& URL, const TArray<uint8>& Bytes, const TMap<FString, FString>& Headers,
                    EHTTPVerbType Verb)
{
    return Request(URL, FString(), Bytes, Headers, Verb);
}

bool FHTTP::Request(const FString& URL, TArray<uint8>&& Bytes, const TMap<FString, FString>& Headers,
                    EHTTPVerbType Verb)
{
    const TSharedRef<IHttpRequest> HttpRequest = MakeRequest(URL, Headers, Verb);
    if (!Bytes.IsEmpty())
    {
        HttpRequest->SetContent(std::move(Bytes));
    }
    return Send(HttpRequest);
}

bool FHTTP::Request(const FString& URL, const FString& ContentString, const TArray<uint8>& Bytes,
                    const TMap<FString, FString>& Headers, EHTTPVerbType Verb)
{
    const TSharedRef<IHttpRequest> HttpRequest = MakeRequest(URL, Headers, Verb);
    if (!Bytes.IsEmpty())
    {
        HttpRequest->SetContent(Bytes);
    }
    else if (!ContentString.IsEmpty())
    {
        HttpRequest->SetContentAsString(ContentString);
    }
    return Send(HttpRequest);
}

TSharedRef<IHttpRequest> FHTTP::MakeRequest(const FString& URL, const TMap<FString, FString>& Headers,
                                            EHTTPVerbType Verb)
{
    const TSharedRef<IHttpRequest> HttpRequest = FHttpModule::Get().CreateRequest();
    HttpRequest->SetURL(URL);
    HttpRequest->SetTimeout(RequestTimeoutSeconds);
    for (const auto& Header : Headers)
    {
        HttpRequest->SetHeader(Header.Key, Header.Value);
    }
    HttpRequest->SetVerb(HTTPVerbToString(Verb));
    return HttpRequest;
}

bool FHTTP::Send(const TSharedRef<IHttpRequest>& HttpRequest)
{
    HttpRequest->OnProcessRequestComplete().BindSP(this, &FHTTP::OnRequestComplete);
    HttpRequest->OnRequestProgress().BindSP(this, &FHTTP::OnRequestProgress);
    HttpRequest->OnHeaderReceived().BindSP(this, &FHTTP::OnRequestHeaderReceived);
    return HttpRequest->ProcessRequest();
}

FString FHTTP::HTTPVerbToString(EHTTPVerbType Verb)
{
    switch (Verb)
    {
    case EHTTPVerbType::PUT:
        return TEXT("PUT");
    case EHTTPVerbType::GET:
        return TEXT("GET");
    case EHTTPVerbType::DELETE:
        return TEXT("DELETE");
    default:
        return TEXT("POST");
    }
}

void FHTTP::OnRequestComplete(FHttpRequestPtr HttpRequest, FHttpResponsePtr HttpResponse, bool bSucceeded)
{
    Delegate.CompleteDelegate.ExecuteIfBound(HttpRequest, HttpResponse, bSucceeded);
}

void FHTTP::OnRequestProgress(FHttpRequestPtr HttpRequest, int32 BytesSent, int32 BytesReceived)
{
    Delegate.ProgressDelegate.ExecuteIfBound(HttpRequest, BytesSent, BytesReceived);
}

void FHTTP::OnRequestHeaderReceived(FHttpRequestPtr HttpRequest, const FString& HeaderName,
                                    const FString& HeaderValue)
{
    Delegate.HeaderReceivedDelegate.ExecuteIfBound(HttpRequest, HeaderName, HeaderValue);
}
} // namespace CadrelHTTP
