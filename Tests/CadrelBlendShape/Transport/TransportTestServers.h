#pragma once

// Real servers on 127.0.0.1 for the transport tests, beside the HTTP module's own
// (FRawServer, TickUntil).

#include "CoreMinimal.h"
#include "HttpTestServers.h"
#include "TestWav.h"

#include <httplib.h>
// httplib.h brings in <arpa/nameser.h>, whose DELETE macro hides the verb of that name.
#undef DELETE

#include <functional>
#include <mutex>
#include <string>
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

    // "http://127.0.0.1:PORT", without a trailing slash.
    FString BaseURL() const { return Server.URL(""); }
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
    bool bRecord = true;
    mutable std::mutex Mutex;
    FAnswer Answer;
    std::vector<FReceivedRequest> Requests;
    // Last, so that it stops, and its handlers finish, before the members they use go.
    FTestServer Server;
};

// Splits a raw request at the blank line: the header block (request line
// included, blank line too) and the body.
std::pair<std::string, std::string> SplitRawRequest(const std::string& Raw);

// A whole HTTP answer with a JSON body, for FRawServer.
std::string JsonReply(const std::string& Body);

// A canonical 44-byte-header WAV: 16-bit mono at SampleRate, Seconds long.
TArray<uint8> MakeWav(int32 SampleRate, double Seconds);
