#pragma once

#include "LiveStreamBuffer.h"

#include <atomic>
#include <httplib.h>
#include <string>
#include <thread>

// Serves the live page (its assets compiled into the program) and pushes the live
// stream's events to it over Server-Sent Events.
class FViewPageServer
{
public:
    explicit FViewPageServer(FLiveStreamBuffer& Buffer);
    ~FViewPageServer();
    FViewPageServer(const FViewPageServer&) = delete;
    FViewPageServer& operator=(const FViewPageServer&) = delete;

    // Port 0 picks a free one.
    bool Start(const std::string& Bind, int Port, std::string& Error);
    void Stop();
    std::string Url() const;

private:
    void ServeAsset(const std::string& Name, const char* ContentType, httplib::Response& Response) const;
    void ServeEvents(httplib::Response& Response);

    FLiveStreamBuffer& Buffer;
    httplib::Server Server;
    std::thread Thread;
    std::string Host;
    int BoundPort = 0;
    std::atomic<bool> bStopping{false};
};
