#include "CurlHttpRequest.h"

#include "HttpModule.h"

FString FCurlHttpRequest::GetHeader(const FString& HeaderName) const
{
    for (const FHeader& Header : Headers)
    {
        if (Header.Name.Equals(HeaderName))
        {
            return Header.Value;
        }
    }
    return FString();
}

TArray<FString> FCurlHttpRequest::GetAllHeaders() const
{
    TArray<FString> Result;
    for (const FHeader& Header : Headers)
    {
        Result.Add(Header.Name + TEXT(": ") + Header.Value);
    }
    return Result;
}

void FCurlHttpRequest::SetHeader(const FString& HeaderName, const FString& HeaderValue)
{
    for (FHeader& Header : Headers)
    {
        if (Header.Name.Equals(HeaderName))
        {
            Header.Value = HeaderValue;
            return;
        }
    }
    Headers.Add(FHeader{HeaderName, HeaderValue});
}

void FCurlHttpRequest::SetContentAsString(const FString& ContentString)
{
    const std::string Utf8 = ContentString.ToUTF8();
    Content = TArray<uint8>(reinterpret_cast<const uint8*>(Utf8.data()), static_cast<int32>(Utf8.size()));
}

bool FCurlHttpRequest::ProcessRequest()
{
    if (Status == EHttpRequestStatus::Processing)
    {
        return false;
    }
    Status = EHttpRequestStatus::Processing;
    FHttpModule::Get().GetHttpManager().AddRequest(StaticCastSharedRef<FCurlHttpRequest>(AsShared()));
    return true;
}

void FCurlHttpRequest::CancelRequest() {}

void FCurlHttpRequest::Finish(FHttpResponsePtr Response, bool bSucceeded)
{
    Status = bSucceeded ? EHttpRequestStatus::Succeeded : EHttpRequestStatus::Failed;
    CompleteDelegate.ExecuteIfBound(AsShared().ToSharedPtr(), Response, bSucceeded);
}
