#pragma once

#include "CoreMinimal.h"
#include "CurlHttpResponse.h"
#include "HttpEventQueue.h"
#include "HttpTransport.h"

#include <curl/curl.h>

#include <memory>
#include <string>
#include <vector>

// One exchange on libcurl's easy interface. Lives on the worker thread only; what it
// learns goes to the event queue.
class FCurlTransfer
{
public:
    FCurlTransfer(FHttpTransferSpec&& InSpec, FHttpEventQueue& InEvents);
    ~FCurlTransfer();
    FCurlTransfer(const FCurlTransfer&) = delete;
    FCurlTransfer& operator=(const FCurlTransfer&) = delete;

    uint64 GetRequestId() const { return Spec.RequestId; }
    // The configured easy handle, or null for a URL that is not http or https or when
    // libcurl could not make one.
    CURL* CreateHandle();
    CURL* GetHandle() const { return Easy; }
    // Queues the last progress figures and the completion.
    void Finish(CURLcode Result);

private:
    void SetVerbAndBody();
    void SetTimeouts();
    void ReportProgress(curl_off_t Sent, curl_off_t Received);
    void OnHeaderLine(std::string_view Line);

    static size_t OnWrite(char* Data, size_t Size, size_t Count, void* Self);
    static size_t OnHeader(char* Data, size_t Size, size_t Count, void* Self);
    static int OnProgress(void* Self, curl_off_t DownTotal, curl_off_t DownNow, curl_off_t UpTotal,
                          curl_off_t UpNow);

    FHttpTransferSpec Spec;
    FHttpEventQueue& Events;
    CURL* Easy = nullptr;
    curl_slist* HeaderList = nullptr;
    char ErrorText[CURL_ERROR_SIZE] = {};
    TSharedPtr<FCurlHttpResponse> Response;
    // Interim answers such as 100 Continue carry no headers of the real answer.
    long StatusOfHeaderBlock = 0;
    int32 LastSent = 0;
    int32 LastReceived = 0;
};
