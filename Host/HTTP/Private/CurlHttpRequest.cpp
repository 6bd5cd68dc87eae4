#include "CurlHttpRequest.h"

#include "HttpTransport.h"
#include "HAL/PlatformTime.h"
#include "HttpLog.h"
#include "HttpModule.h"

#include <cmath>
#include <cstdlib>

namespace
{
// The characters HTTP allows in a method or a header name.
bool IsToken(const FString& Text)
{
    if (Text.IsEmpty())
    {
        return false;
    }
    for (const TCHAR Char : Text.View())
    {
        const bool bAlnum = (Char >= u'0' && Char <= u'9') || (Char >= u'a' && Char <= u'z') ||
                            (Char >= u'A' && Char <= u'Z');
        if (!bAlnum && std::u16string_view(u"!#$%&'*+-.^_`|~").find(Char) == std::u16string_view::npos)
        {
            return false;
        }
    }
    return true;
}

// A line break would end the header early and let the value forge headers of its own.
bool IsSafeHeaderValue(const FString& Text)
{
    return Text.View().find_first_of(std::u16string_view(u"\r\n\0", 3)) == std::u16string_view::npos;
}

double PositiveOrZero(double Seconds)
{
    return std::isfinite(Seconds) && Seconds > 0.0 ? Seconds : 0.0;
}

// Trusts a certificate authority the way curl's own tools do.
std::string FindCAFile()
{
    for (const char* Name : {"CURL_CA_BUNDLE", "SSL_CERT_FILE"})
    {
        const char* Value = std::getenv(Name);
        if (Value && *Value)
        {
            return Value;
        }
    }
    return {};
}
} // namespace

FCurlHttpRequest::FCurlHttpRequest() : Verb(TEXT("GET")), Content(std::make_shared<const TArray<uint8>>()) {}

FString FCurlHttpRequest::GetHeader(const FString& HeaderName) const
{
    return FindHttpHeader(Headers, HeaderName);
}

TArray<FString> FCurlHttpRequest::GetAllHeaders() const
{
    return FormatHttpHeaders(Headers);
}

float FCurlHttpRequest::GetElapsedTime() const
{
    if (Status == EHttpRequestStatus::NotStarted)
    {
        return 0.0f;
    }
    const double End = Status == EHttpRequestStatus::Processing ? FPlatformTime::Seconds() : EndSeconds;
    return static_cast<float>(End - StartSeconds);
}

void FCurlHttpRequest::SetHeader(const FString& HeaderName, const FString& HeaderValue)
{
    for (FHttpHeader& Header : Headers)
    {
        if (Header.Name.Equals(HeaderName))
        {
            Header.Value = HeaderValue;
            return;
        }
    }
    Headers.Add(FHttpHeader{HeaderName, HeaderValue});
}

void FCurlHttpRequest::SetContent(const TArray<uint8>& ContentPayload)
{
    Content = std::make_shared<const TArray<uint8>>(ContentPayload);
}

void FCurlHttpRequest::SetContent(TArray<uint8>&& ContentPayload)
{
    Content = std::make_shared<const TArray<uint8>>(std::move(ContentPayload));
}

void FCurlHttpRequest::SetContentAsString(const FString& ContentString)
{
    const std::string Utf8 = ContentString.ToUTF8();
    Content = std::make_shared<const TArray<uint8>>(reinterpret_cast<const uint8*>(Utf8.data()),
                                                    static_cast<int32>(Utf8.size()));
}

bool FCurlHttpRequest::ProcessRequest()
{
    if (Status != EHttpRequestStatus::NotStarted)
    {
        ORV_LOG(LogHttp, Warning, TEXT("Request to %s was started twice; the second start is refused."),
                *URL);
        return false;
    }
    const FString Problem = FindMalformedPart();
    if (!Problem.IsEmpty())
    {
        ORV_LOG(LogHttp, Warning, TEXT("Request to %s not sent: %s"), *URL, *Problem);
        return false;
    }
    Status = EHttpRequestStatus::Processing;
    StartSeconds = FPlatformTime::Seconds();
    RequestId = FHttpModule::Get().GetHttpManager().StartRequest(
        StaticCastSharedRef<FCurlHttpRequest>(AsShared()), MakeTransferSpec());
    return true;
}

void FCurlHttpRequest::CancelRequest()
{
    if (Status == EHttpRequestStatus::Processing)
    {
        FHttpModule::Get().GetHttpManager().CancelRequest(RequestId);
    }
}

FString FCurlHttpRequest::FindMalformedPart() const
{
    if (!Verb.IsEmpty() && !IsToken(Verb))
    {
        return TEXT("the verb is not a single HTTP token");
    }
    for (const FHttpHeader& Header : Headers)
    {
        if (!IsToken(Header.Name))
        {
            return FString::Printf(TEXT("the header name \"%s\" is not a single HTTP token"), *Header.Name);
        }
        if (!IsSafeHeaderValue(Header.Value))
        {
            return FString::Printf(TEXT("the value of header %s holds a line break"), *Header.Name);
        }
    }
    return FString();
}

FHttpTransferSpec FCurlHttpRequest::MakeTransferSpec() const
{
    FHttpTransferSpec Spec;
    Spec.URL = URL;
    Spec.Verb = Verb.IsEmpty() ? "GET" : Verb.ToUpper().ToUTF8();
    bool bHasExpect = false;
    bool bHasContentType = false;
    for (const FHttpHeader& Header : Headers)
    {
        // libcurl reads "Name:" as "drop this header"; "Name;" sends it empty.
        Spec.HeaderLines.push_back(Header.Name.ToUTF8() +
                                   (Header.Value.IsEmpty() ? ";" : ": " + Header.Value.ToUTF8()));
        bHasExpect |= Header.Name.Equals(TEXT("Expect"));
        bHasContentType |= Header.Name.Equals(TEXT("Content-Type"));
    }
    // Servers that ignore "Expect: 100-continue" would stall a large body for a second.
    if (!bHasExpect)
    {
        Spec.HeaderLines.push_back("Expect:");
    }
    // libcurl would otherwise label any body as a submitted form.
    if (!bHasContentType)
    {
        Spec.HeaderLines.push_back("Content-Type:");
    }
    Spec.Body = Content;
    const double ModuleTimeout = PositiveOrZero(FHttpModule::Get().GetHttpTimeout());
    const double OwnTimeout = PositiveOrZero(TimeoutSecs);
    Spec.TimeoutSeconds = OwnTimeout > 0.0 ? OwnTimeout : ModuleTimeout;
    Spec.CAFile = FindCAFile();
    return Spec;
}

void FCurlHttpRequest::DeliverProgress(int32 BytesSent, int32 BytesReceived)
{
    ProgressDelegate.ExecuteIfBound(AsShared().ToSharedPtr(), BytesSent, BytesReceived);
}

void FCurlHttpRequest::DeliverHeader(const FString& Name, const FString& Value)
{
    HeaderDelegate.ExecuteIfBound(AsShared().ToSharedPtr(), Name, Value);
}

void FCurlHttpRequest::DeliverCompletion(const FHttpResponsePtr& Response, bool bSucceeded,
                                         double CompletedSeconds)
{
    Status = bSucceeded ? EHttpRequestStatus::Succeeded : EHttpRequestStatus::Failed;
    EndSeconds = CompletedSeconds;
    CompleteDelegate.ExecuteIfBound(AsShared().ToSharedPtr(), Response, bSucceeded);
}
