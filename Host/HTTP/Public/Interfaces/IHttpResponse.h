#pragma once

#include "CoreMinimal.h"
#include "HttpFwd.h"

// The answer to one request: what the server sent, read on the ticking thread.
class HTTP_API IHttpResponse
{
public:
    virtual ~IHttpResponse() = default;

    virtual FString GetURL() const = 0;
    // The status line's code, such as 200 or 500.
    virtual int32 GetResponseCode() const = 0;
    // The body's bytes exactly as they arrived.
    virtual const TArray<uint8>& GetContent() const = 0;
    // The body read as UTF-8; bad sequences become U+FFFD.
    virtual FString GetContentAsString() const = 0;
    // The value of the first header of that name (any case), or empty text.
    virtual FString GetHeader(const FString& HeaderName) const = 0;
    virtual TArray<FString> GetAllHeaders() const = 0;
};

using FHttpResponsePtr = TSharedPtr<IHttpResponse>;
