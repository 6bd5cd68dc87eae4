#pragma once

// Real servers on 127.0.0.1 for the transport tests, and the helpers that drive the
// host's HTTP manager the way the editor's main loop does.

#include "CoreMinimal.h"

#include <httplib.h>
// httplib.h brings in <arpa/nameser.h>, whose DELETE macro hides the verb of that name.
#undef DELETE

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// What a lipsync server received, after cpp-httplib's own multipart parser.
struct FReceivedRequest
{
    std::string Path;
    httplib::Headers Headers;
    httplib::MultipartFormDataMap Parts;
};

// Answers like both server kinds on their four endpoints; a test may replace the
// answer. Records every request it receives.
class FLipsyncTestServer
{
public:
    using FAnswer = std::function<void(const httplib::Request&, httplib::Response&)>;

    // A server that does not record keeps no copy of what it receives.
    explicit FLipsyncTestServer(bool bInRecord = true);
    ~FLipsyncTestServer();

    // "http://127.0.0.1:PORT", without a trailing slash.
    FString BaseURL() const;
    void SetAnswer(FAnswer InAnswer);
    std::vector<FReceivedRequest> Received() const;

    // Points the settings' A2FURL and the cloud endpoints at this server for the
    // lifetime of the returned guard.
    struct FEndpointGuard
    {
        explicit FEndpointGuard(const FString& BaseURL);
        ~FEndpointGuard();
        FString SavedA2FURL;
    };

    static std::string DefaultAnswer(const std::string& Path);

private:
    httplib::Server Server;
    std::thread Thread;
    int Port = 0;
    bool bRecord = true;
    mutable std::mutex Mutex;
    FAnswer Answer;
    std::vector<FReceivedRequest> Requests;
};

// The header block (request line included, up to the blank line) and the body.
using FRawRequest = std::pair<std::string, std::string>;

// Takes whole HTTP requests off the socket as bytes, so that tests can compare the
// header block and the body with what the servers expect, byte for byte.
class FRawCaptureServer
{
public:
    explicit FRawCaptureServer(std::string InAnswerBody);
    ~FRawCaptureServer();

    FString BaseURL() const;
    // Ticks until Count requests have arrived, or five seconds have passed.
    std::vector<FRawRequest> WaitForRequests(size_t Count);

private:
    void Serve();

    std::string AnswerBody;
    int ListenSocket = -1;
    int Port = 0;
    std::thread Thread;
    std::mutex Mutex;
    std::vector<FRawRequest> Requests;
};

// Ticks the host's HTTP manager, as the main loop does, until Done() or a time-out.
bool TickUntil(const std::function<bool()>& Done, std::chrono::milliseconds Limit = std::chrono::seconds(10));

// A canonical 44-byte-header WAV: 16-bit mono at SampleRate, Seconds long.
TArray<uint8> MakeWav(int32 SampleRate, double Seconds);
