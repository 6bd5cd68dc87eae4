#include "CurlHttpResponse.h"

#include <string_view>

FString FCurlHttpResponse::GetContentAsString() const
{
    return FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Content.GetData()),
                                              static_cast<SIZE_T>(Content.Num())));
}

FString FCurlHttpResponse::GetHeader(const FString& HeaderName) const
{
    return FindHttpHeader(Headers, HeaderName);
}

TArray<FString> FCurlHttpResponse::GetAllHeaders() const
{
    return FormatHttpHeaders(Headers);
}

bool FCurlHttpResponse::AppendContent(const char* Data, SIZE_T Count)
{
    if (Count > static_cast<SIZE_T>(INT32_MAX - Content.Num()))
    {
        return false;
    }
    Content.Append(reinterpret_cast<const uint8*>(Data), static_cast<int32>(Count));
    return true;
}

void FCurlHttpResponse::AddHeader(const FString& Name, const FString& Value)
{
    Headers.Add(FHttpHeader{Name, Value});
}
