#pragma once

#include "CoreMinimal.h"
#include "HttpHeaderList.h"
#include "Interfaces/IHttpResponse.h"

#include <algorithm>

// What the server sent. Filled on the worker thread while the exchange runs and
// read only on the ticking thread once the request has completed.
class FCurlHttpResponse : public IHttpResponse
{
public:
    explicit FCurlHttpResponse(const FString& InURL) : URL(InURL) {}

    FString GetURL() const override { return URL; }
    int32 GetResponseCode() const override { return ResponseCode; }
    const TArray<uint8>& GetContent() const override { return Content; }
    FString GetContentAsString() const override;
    FString GetHeader(const FString& HeaderName) const override;
    TArray<FString> GetAllHeaders() const override;

    void SetResponseCode(int32 Code) { ResponseCode = Code; }
    void ReserveContent(int64 Bytes)
    {
        Content.Reserve(static_cast<int32>(std::clamp<int64>(Bytes, 0, INT32_MAX)));
    }
    // False once the body would outgrow what the byte array can index.
    bool AppendContent(const char* Data, SIZE_T Count);
    void AddHeader(const FString& Name, const FString& Value);

private:
    FString URL;
    int32 ResponseCode = 0;
    TArray<uint8> Content;
    TArray<FHttpHeader> Headers;
};
