#pragma once

#include <cstddef>
#include <memory>
#include <string>

struct FLipsyncServerOptions
{
    std::string Bind = "127.0.0.1";
    // 0 picks a free port.
    int Port = 9011;
    // When set, every lipsync request must carry exactly this "Authorization" value.
    std::string Token;
    // Worker threads; each keeps one client connection, so this is also how many
    // kept-alive clients are served at once.
    int Threads = 64;
    int Fps = 60;
    std::size_t MaxBody = 64u << 20;
    // Longer speech is refused; it bounds the work and memory of one request.
    double MaxAudioSeconds = 600.0;
    bool bQuiet = false;
    // How long an idle client connection is kept open; Stop closes idle
    // connections at once. With 0 a connection stays only while its next request
    // follows within milliseconds.
    int KeepAliveSeconds = 5;
    // The live animation receiver that stream answers point clients to, and that
    // the server sends every answered chunk's frames and audio to unless !bVelk.
    std::string VelkHost = "127.0.0.1";
    int VelkPort = 9012;
    int AudioPort = 9013;
    bool bVelk = true;
    std::size_t MaxStreams = 1024;
    int StreamIdleSeconds = 60;
};

// The reference lipsync server: the four lipsync endpoints and /healthz on one
// port. Start it, read its BaseUrl, Stop it from any thread, Wait for it to finish;
// requests in flight are answered before Wait returns, idle kept-alive connections
// are closed without waiting for their time-out.
class FLipsyncServer
{
public:
    explicit FLipsyncServer(FLipsyncServerOptions Options);
    ~FLipsyncServer();
    FLipsyncServer(const FLipsyncServer&) = delete;
    FLipsyncServer& operator=(const FLipsyncServer&) = delete;

    // Binds and starts accepting connections on a thread of its own. False, with
    // the reason in OutError, when the address cannot be bound.
    bool Start(std::string& OutError);

    int Port() const;
    // Such as http://127.0.0.1:43521.
    std::string BaseUrl() const;

    void Stop();
    void Wait();

private:
    struct FImpl;
    std::unique_ptr<FImpl> Impl;
};
