#pragma once

#include "CoreMinimal.h"
#include "CadrelBlendShapeType.h"
#include "CadrelHTTP.h"

// Sends one lipsync request: the request document and the WAV bytes as one
// multipart POST. The answer is not read here; it reaches OnZELRequestComplete,
// whose caller reads the body with the CadrelJson readers.
//
// Between requests the dispatcher remembers how the previous exchange went (the
// answer's size, the time it took, the animation length the caller reported) and
// tells the server in the next request. Issue requests on the thread that ticks the
// host's HTTP manager: that is where completions arrive, and nothing here is locked.
struct CADRELBLENDSHAPE_API FCadrelBlendShape : public TSharedFromThis<FCadrelBlendShape>
{
    FCadrelBlendShape();
    // A copy gets an HTTP object of its own, so that its requests' callbacks reach
    // the copy and never an instance that may be gone.
    FCadrelBlendShape(const FCadrelBlendShape& Other);
    FCadrelBlendShape& operator=(const FCadrelBlendShape& Other);

    // Fired only for completions that carry a response; a transport failure without
    // one fires nothing.
    FHttpRequestCompleteDelegate OnZELRequestComplete;
    FHttpRequestProgressDelegate OnZELRequestProgress;
    FHttpRequestHeaderReceivedDelegate OnZELHeaderReceived;

    // Both answer whether the host accepted the request. They write the remembered
    // measurements into Request.Meta, which the caller sees after the call: Request
    // must not be an object declared const.
    bool ZELRequest(const FCadrelZELRequest& Request, const FCadrelZELRequestParam& Param,
                    const TArray<uint8>& AudioData);
    bool ZELStreamRequest(const FCadrelZELRequest& Request, const FCadrelZELRequestParam& Param,
                          const TArray<uint8>& AudioData);

    void SetPrevAnimLength(int32 InPrevAnimLength) { PrevAnimLength = InPrevAnimLength; }

private:
    void BindHTTPObject();
    bool ZELRequest_Internal(const FString& URL, const FCadrelZELRequest& Request,
                             const FCadrelZELRequestParam& Param, const TArray<uint8>& AudioData);

    void OnRequestComplete(FHttpRequestPtr HttpRequest, FHttpResponsePtr HttpResponse, bool bSucceeded);
    void OnRequestProgress(FHttpRequestPtr HttpRequest, int32 BytesSent, int32 BytesReceived);
    void OnRequestHeaderReceived(FHttpRequestPtr HttpRequest, const FString& HeaderName,
                                 const FString& HeaderValue);

    TSharedPtr<CadrelHTTP::FHTTP> HTTPObject;
    int32 PrevSize = 0;
    int32 PrevAnimLength = 0;
    // Seconds from the most recent send to the last completion.
    float Latency = 0.0f;
    double RequestStartTime = 0.0;
};
