#include "CurlTransfer.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace
{
// Without an overall limit, a request that hears nothing for three minutes is lost.
constexpr long StallSeconds = 180;
// Caps an overall limit at 24 days, well inside libcurl's long milliseconds.
constexpr double MaxTimeoutMs = 2.0e9;
// A server's announced length is believed only this far before bytes arrive.
constexpr curl_off_t MaxReservedBytes = 256 << 20;

int32 SaturateToInt32(curl_off_t Value)
{
    return static_cast<int32>(std::clamp<curl_off_t>(Value, 0, INT32_MAX));
}

std::string_view Trim(std::string_view Text)
{
    const size_t First = Text.find_first_not_of(" \t\r\n");
    if (First == std::string_view::npos)
    {
        return {};
    }
    const size_t Last = Text.find_last_not_of(" \t\r\n");
    return Text.substr(First, Last - First + 1);
}
} // namespace

FCurlTransfer::FCurlTransfer(FHttpTransferSpec&& InSpec, FHttpEventQueue& InEvents)
    : Spec(std::move(InSpec)), Events(InEvents), Response(MakeShared<FCurlHttpResponse>(Spec.URL))
{
}

FCurlTransfer::~FCurlTransfer()
{
    if (Easy)
    {
        curl_easy_cleanup(Easy);
    }
    curl_slist_free_all(HeaderList);
}

CURL* FCurlTransfer::CreateHandle()
{
    // libcurl would guess http for a bare host name; only explicit http and https go.
    const FString& URL = Spec.URL;
    if (!URL.StartsWith(TEXT("http://")) && !URL.StartsWith(TEXT("https://")))
    {
        return nullptr;
    }
    Easy = curl_easy_init();
    if (!Easy)
    {
        return nullptr;
    }
    for (const std::string& Line : Spec.HeaderLines)
    {
        curl_slist* Appended = curl_slist_append(HeaderList, Line.c_str());
        if (!Appended)
        {
            return nullptr;
        }
        HeaderList = Appended;
    }
    curl_easy_setopt(Easy, CURLOPT_PRIVATE, this);
    curl_easy_setopt(Easy, CURLOPT_ERRORBUFFER, ErrorText);
    curl_easy_setopt(Easy, CURLOPT_URL, Spec.URL.ToUTF8().c_str());
    curl_easy_setopt(Easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(Easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(Easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    curl_easy_setopt(Easy, CURLOPT_HTTPHEADER, HeaderList);
    curl_easy_setopt(Easy, CURLOPT_WRITEFUNCTION, &FCurlTransfer::OnWrite);
    curl_easy_setopt(Easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(Easy, CURLOPT_HEADERFUNCTION, &FCurlTransfer::OnHeader);
    curl_easy_setopt(Easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(Easy, CURLOPT_XFERINFOFUNCTION, &FCurlTransfer::OnProgress);
    curl_easy_setopt(Easy, CURLOPT_XFERINFODATA, this);
    curl_easy_setopt(Easy, CURLOPT_NOPROGRESS, 0L);
    if (!Spec.CAFile.empty())
    {
        curl_easy_setopt(Easy, CURLOPT_CAINFO, Spec.CAFile.c_str());
    }
    SetVerbAndBody();
    SetTimeouts();
    return Easy;
}

void FCurlTransfer::SetVerbAndBody()
{
    const bool bHasBody = Spec.Body && !Spec.Body->IsEmpty();
    if (Spec.Verb == "HEAD")
    {
        curl_easy_setopt(Easy, CURLOPT_NOBODY, 1L);
        return;
    }
    if (Spec.Verb == "GET" && !bHasBody)
    {
        curl_easy_setopt(Easy, CURLOPT_HTTPGET, 1L);
        return;
    }
    if (bHasBody || Spec.Verb == "POST" || Spec.Verb == "PUT")
    {
        // libcurl reads the request's own bytes; an empty body still says
        // Content-Length: 0.
        curl_easy_setopt(Easy, CURLOPT_POST, 1L);
        curl_easy_setopt(Easy, CURLOPT_POSTFIELDSIZE_LARGE,
                         static_cast<curl_off_t>(bHasBody ? Spec.Body->Num() : 0));
        curl_easy_setopt(Easy, CURLOPT_POSTFIELDS,
                         bHasBody ? static_cast<const void*>(Spec.Body->GetData()) : "");
    }
    if (Spec.Verb != "POST")
    {
        curl_easy_setopt(Easy, CURLOPT_CUSTOMREQUEST, Spec.Verb.c_str());
    }
}

void FCurlTransfer::SetTimeouts()
{
    if (Spec.TimeoutSeconds > 0.0)
    {
        const double Ms = std::clamp(std::ceil(Spec.TimeoutSeconds * 1000.0), 1.0, MaxTimeoutMs);
        curl_easy_setopt(Easy, CURLOPT_TIMEOUT_MS, static_cast<long>(Ms));
        return;
    }
    curl_easy_setopt(Easy, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(Easy, CURLOPT_LOW_SPEED_TIME, StallSeconds);
}

void FCurlTransfer::Finish(CURLcode Result)
{
    curl_off_t Sent = 0;
    curl_off_t Received = 0;
    curl_easy_getinfo(Easy, CURLINFO_SIZE_UPLOAD_T, &Sent);
    curl_easy_getinfo(Easy, CURLINFO_SIZE_DOWNLOAD_T, &Received);
    ReportProgress(Sent, Received);

    FHttpEvent Event;
    Event.RequestId = Spec.RequestId;
    Event.Kind = EHttpEventKind::Complete;
    if (Result == CURLE_OK)
    {
        long Code = 0;
        curl_easy_getinfo(Easy, CURLINFO_RESPONSE_CODE, &Code);
        Response->SetResponseCode(static_cast<int32>(Code));
        Event.Response = Response;
        Event.bSucceeded = true;
    }
    else
    {
        Event.Value = FString::FromUTF8(ErrorText[0] ? ErrorText : curl_easy_strerror(Result));
    }
    Events.Push(std::move(Event));
}

void FCurlTransfer::ReportProgress(curl_off_t Sent, curl_off_t Received)
{
    const int32 NewSent = SaturateToInt32(Sent);
    const int32 NewReceived = SaturateToInt32(Received);
    if (NewSent == LastSent && NewReceived == LastReceived)
    {
        return;
    }
    LastSent = NewSent;
    LastReceived = NewReceived;
    Events.SetProgress(FHttpProgress{Spec.RequestId, NewSent, NewReceived});
}

void FCurlTransfer::OnHeaderLine(std::string_view Line)
{
    if (Line.starts_with("HTTP/"))
    {
        // "HTTP/1.1 200 OK": a line without a readable code counts as interim.
        StatusOfHeaderBlock = 0;
        const size_t Space = Line.find(' ');
        if (Space != std::string_view::npos)
        {
            const std::string_view Code = Line.substr(Space + 1, 3);
            std::from_chars(Code.data(), Code.data() + Code.size(), StatusOfHeaderBlock);
        }
        return;
    }
    const size_t Colon = Line.find(':');
    if (StatusOfHeaderBlock < 200 || Colon == std::string_view::npos)
    {
        return;
    }
    FHttpEvent Event;
    Event.RequestId = Spec.RequestId;
    Event.Kind = EHttpEventKind::Header;
    Event.Name = FString::FromUTF8(Trim(Line.substr(0, Colon)));
    Event.Value = FString::FromUTF8(Trim(Line.substr(Colon + 1)));
    Response->AddHeader(Event.Name, Event.Value);
    Events.Push(std::move(Event));
}

size_t FCurlTransfer::OnWrite(char* Data, size_t Size, size_t Count, void* Self)
{
    FCurlTransfer* Transfer = static_cast<FCurlTransfer*>(Self);
    if (Transfer->Response->GetContent().IsEmpty())
    {
        // Growing a large body step by step costs more in copies than the answer.
        curl_off_t Announced = -1;
        curl_easy_getinfo(Transfer->Easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T, &Announced);
        Transfer->Response->ReserveContent(std::min<curl_off_t>(Announced, MaxReservedBytes));
    }
    const size_t Bytes = Size * Count;
    // Returning less than was given makes libcurl fail the transfer.
    return Transfer->Response->AppendContent(Data, Bytes) ? Bytes : 0;
}

size_t FCurlTransfer::OnHeader(char* Data, size_t Size, size_t Count, void* Self)
{
    static_cast<FCurlTransfer*>(Self)->OnHeaderLine(std::string_view(Data, Size * Count));
    return Size * Count;
}

int FCurlTransfer::OnProgress(void* Self, curl_off_t, curl_off_t DownNow, curl_off_t, curl_off_t UpNow)
{
    static_cast<FCurlTransfer*>(Self)->ReportProgress(UpNow, DownNow);
    return 0;
}
