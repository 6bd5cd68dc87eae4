#include "TransportTestServers.h"

#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

#include <sys/socket.h>

#include <algorithm>

#include <cstring>

namespace
{
FString LocalURL(int Port)
{
    return FString::Printf(TEXT("http://127.0.0.1:%d"), Port);
}
} // namespace

FLipsyncTestServer::FLipsyncTestServer(bool bInRecord) : bRecord(bInRecord)
{
    Server.Post(".*",
                [this](const httplib::Request& Request, httplib::Response& Response)
                {
                    FAnswer Current;
                    {
                        std::lock_guard Lock(Mutex);
                        if (bRecord)
                        {
                            Requests.push_back({Request.path, Request.headers, Request.files});
                        }
                        Current = Answer;
                    }
                    if (Current)
                    {
                        Current(Request, Response);
                        return;
                    }
                    Response.set_content(DefaultAnswer(Request.path), "application/json");
                });
    // A kept-alive connection holds a worker, and up to 64 clients each open one
    // per request in flight.
    Server.new_task_queue = [] { return new httplib::ThreadPool(160); };
    // Stopping waits for idle kept-alive connections to time out.
    Server.set_keep_alive_timeout(1);
    Server.set_tcp_nodelay(true);
    int ListenSocket = -1;
    Server.set_socket_options([&ListenSocket](socket_t Socket) { ListenSocket = Socket; });
    Port = Server.bind_to_any_port("127.0.0.1");
    // cpp-httplib listens with a backlog of 5, which a burst of 64 new connections
    // overflows: the kernel drops them and clients wait for a retransmit.
    ::listen(ListenSocket, SOMAXCONN);
    Thread = std::thread([this] { Server.listen_after_bind(); });
}

FLipsyncTestServer::~FLipsyncTestServer()
{
    Server.stop();
    Thread.join();
}

FString FLipsyncTestServer::BaseURL() const
{
    return LocalURL(Port);
}

void FLipsyncTestServer::SetAnswer(FAnswer InAnswer)
{
    std::lock_guard Lock(Mutex);
    Answer = std::move(InAnswer);
}

std::vector<FReceivedRequest> FLipsyncTestServer::Received() const
{
    std::lock_guard Lock(Mutex);
    return Requests;
}

std::string FLipsyncTestServer::DefaultAnswer(const std::string& Path)
{
    if (Path == "/bs/api/v1/zel")
    {
        return R"({"exportFps":60,"trackPath":"/World/audio2face/Player","numPoses":2,"numFrames":2,)"
               R"("facsNames":["jawOpen","mouthClose"],"weightMat":[[0.5,0.1],[0.25,0.2]]})";
    }
    if (Path == "/dh/api/v2/zel")
    {
        return R"({"version":"1.0","platform":"test","fps":60,"frames":[{"blendshapes":[0.5,0.1],)"
               R"("bones":[{"eul":[1,2,3]}]}],"blendShapesNames":["jawOpen","mouthClose"],"bonesNames":["neck"]})";
    }
    return R"({"VelkHost":"127.0.0.1","VelkPort":901,"AudioPort":902,"TimeLength":1000})";
}

FLipsyncTestServer::FEndpointGuard::FEndpointGuard(const FString& BaseURL)
{
    UCadrelSetting* Settings = GetMutableDefault<UCadrelSetting>();
    SavedA2FURL = Settings->A2FURL;
    Settings->A2FURL = BaseURL;
    GConfig->SetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), BaseURL, GEngineIni);
}

FLipsyncTestServer::FEndpointGuard::~FEndpointGuard()
{
    GetMutableDefault<UCadrelSetting>()->A2FURL = SavedA2FURL;
    GConfig->SetString(TEXT("Cadrel"), TEXT("CloudBaseURL"), TEXT(""), GEngineIni);
}

std::pair<std::string, std::string> SplitRawRequest(const std::string& Raw)
{
    const size_t HeadEnd = std::min(Raw.find("\r\n\r\n"), Raw.size()) + 4;
    return {Raw.substr(0, HeadEnd), HeadEnd < Raw.size() ? Raw.substr(HeadEnd) : std::string()};
}

std::string JsonReply(const std::string& Body)
{
    return "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(Body.size()) + "\r\nConnection: close\r\n\r\n" + Body;
}

TArray<uint8> MakeWav(int32 SampleRate, double Seconds)
{
    const uint32 DataSize = static_cast<uint32>(SampleRate * Seconds) * 2;
    const uint32 ByteRate = static_cast<uint32>(SampleRate) * 2;
    const uint32 Fields[] = {0x46464952u,
                             36 + DataSize,
                             0x45564157u,
                             0x20746d66u,
                             16,
                             0x00010001u,
                             static_cast<uint32>(SampleRate),
                             ByteRate,
                             0x00100002u,
                             0x61746164u,
                             DataSize};
    TArray<uint8> Wav;
    Wav.SetNum(static_cast<int32>(sizeof(Fields) + DataSize));
    std::memcpy(Wav.GetData(), Fields, sizeof(Fields));
    for (uint32 Sample = 0; Sample < DataSize / 2; ++Sample)
    {
        const int16 Value = static_cast<int16>((Sample * 37) % 2000 - 1000);
        std::memcpy(Wav.GetData() + sizeof(Fields) + Sample * 2, &Value, 2);
    }
    return Wav;
}
