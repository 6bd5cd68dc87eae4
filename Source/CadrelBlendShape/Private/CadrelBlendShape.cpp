#include "CadrelBlendShape.h"

#include "CadrelBlendShapeBody.h"
#include "CadrelJson.h"
#include "HttpModule.h"

namespace
{
// The module-wide limit, set on every request: the host may have changed it.
constexpr double ModuleTimeoutSeconds = 30.0;

TMap<FString, FString> MakeZELHeaders(const FCadrelZELRequestParam& Param, int32 AudioSize)
{
    TMap<FString, FString> Headers;
    if (!Param.Token.IsEmpty())
    {
        // The services take the bare token, without a scheme word in front.
        Headers.Add(TEXT("Authorization"), Param.Token);
    }
    Headers.Add(TEXT("Content-Type"), TEXT("multipart/form-data; boundary=ZELBoundary"));
    Headers.Add(TEXT("Accept-Encoding"), TEXT("utf-8"));
    Headers.Add(TEXT("ZELGuid"), Param.ID.ToString(EGuidFormats::Digits));
    Headers.Add(TEXT("ZELIndex"), FString::FromInt(Param.Index));
    Headers.Add(TEXT("ZELMainIndex"), FString::FromInt(Param.MainIndex));
    Headers.Add(TEXT("RequestType"), CadrelJson::GetType(Param.LinkServerType));
    Headers.Add(TEXT("bStream"), Param.bStream ? TEXT("1") : TEXT("0"));
    Headers.Add(TEXT("AudioSize"), FString::FromInt(AudioSize));
    return Headers;
}
} // namespace

FCadrelBlendShape::FCadrelBlendShape()
{
    BindHTTPObject();
}

FCadrelBlendShape::FCadrelBlendShape(const FCadrelBlendShape& Other)
    : TSharedFromThis<FCadrelBlendShape>(Other), OnZELRequestComplete(Other.OnZELRequestComplete),
      OnZELRequestProgress(Other.OnZELRequestProgress), OnZELHeaderReceived(Other.OnZELHeaderReceived),
      PrevSize(Other.PrevSize), PrevAnimLength(Other.PrevAnimLength), Latency(Other.Latency),
      RequestStartTime(Other.RequestStartTime)
{
    BindHTTPObject();
}

FCadrelBlendShape& FCadrelBlendShape::operator=(const FCadrelBlendShape& Other)
{
    OnZELRequestComplete = Other.OnZELRequestComplete;
    OnZELRequestProgress = Other.OnZELRequestProgress;
    OnZELHeaderReceived = Other.OnZELHeaderReceived;
    PrevSize = Other.PrevSize;
    PrevAnimLength = Other.PrevAnimLength;
    Latency = Other.Latency;
    RequestStartTime = Other.RequestStartTime;
    return *this;
}

void FCadrelBlendShape::BindHTTPObject()
{
    CadrelHTTP::FHTTPDelegate Delegate;
    Delegate.CompleteDelegate.BindRaw(this, &FCadrelBlendShape::OnRequestComplete);
    Delegate.ProgressDelegate.BindRaw(this, &FCadrelBlendShape::OnRequestProgress);
    Delegate.HeaderReceivedDelegate.BindRaw(this, &FCadrelBlendShape::OnRequestHeaderReceived);
    HTTPObject = CadrelHTTP::FHTTP::CreateHTTPObject(std::move(Delegate));
}

bool FCadrelBlendShape::ZELRequest(const FCadrelZELRequest& Request, const FCadrelZELRequestParam& Param,
                                   const TArray<uint8>& AudioData)
{
    return ZELRequest_Internal(CadrelJson::GetBlendShapeURL(Param.LinkServerType), Request, Param, AudioData);
}

bool FCadrelBlendShape::ZELStreamRequest(const FCadrelZELRequest& Request,
                                         const FCadrelZELRequestParam& Param, const TArray<uint8>& AudioData)
{
    return ZELRequest_Internal(CadrelJson::GetStreamURL(Param.LinkServerType), Request, Param, AudioData);
}

bool FCadrelBlendShape::ZELRequest_Internal(const FString& URL, const FCadrelZELRequest& Request,
                                            const FCadrelZELRequestParam& Param,
                                            const TArray<uint8>& AudioData)
{
    FHttpModule::Get().SetHttpTimeout(ModuleTimeoutSeconds);
    const TMap<FString, FString> Headers = MakeZELHeaders(Param, AudioData.Num());

    // Callers read the measurements back from the request they passed in.
    FCadrelIORequestMeta& Meta = const_cast<FCadrelZELRequest&>(Request).Meta;
    Meta.PrevSize = PrevSize;
    Meta.Latency = Latency;
    Meta.PrevAudioLength = PrevAnimLength;

    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    TArray<uint8> Body = MakeZELRequestBody(Json, AudioData);

    RequestStartTime = FPlatformTime::Seconds();
    return HTTPObject->Request(URL, std::move(Body), Headers, CadrelHTTP::EHTTPVerbType::POST);
}

void FCadrelBlendShape::OnRequestComplete(FHttpRequestPtr HttpRequest, FHttpResponsePtr HttpResponse,
                                          bool bSucceeded)
{
    const double Now = FPlatformTime::Seconds();
    if (!HttpRequest.IsValid() || !HttpResponse.IsValid())
    {
        return;
    }
    // The caller may let go of this dispatcher inside its callback; the measurements
    // below still need it.
    const std::shared_ptr<FCadrelBlendShape> KeepAlive = weak_from_this().lock();
    OnZELRequestComplete.ExecuteIfBound(HttpRequest, HttpResponse, bSucceeded);
    Latency = static_cast<float>(Now - RequestStartTime);
    PrevSize = HttpResponse->GetContent().Num();
}

void FCadrelBlendShape::OnRequestProgress(FHttpRequestPtr HttpRequest, int32 BytesSent, int32 BytesReceived)
{
    OnZELRequestProgress.ExecuteIfBound(HttpRequest, BytesSent, BytesReceived);
}

void FCadrelBlendShape::OnRequestHeaderReceived(FHttpRequestPtr HttpRequest, const FString& HeaderName,
                                                const FString& HeaderValue)
{
    OnZELHeaderReceived.ExecuteIfBound(HttpRequest, HeaderName, HeaderValue);
}
