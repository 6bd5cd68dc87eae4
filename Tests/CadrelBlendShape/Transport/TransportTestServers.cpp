#include "TransportTestServers.h"

#include "HttpModule.h"
#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

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

FRawCaptureServer::FRawCaptureServer(std::string InAnswerBody) : AnswerBody(std::move(InAnswerBody))
{
    ListenSocket = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in Address{};
    Address.sin_family = AF_INET;
    Address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t Length = sizeof(Address);
    ::bind(ListenSocket, reinterpret_cast<sockaddr*>(&Address), Length);
    ::listen(ListenSocket, 8);
    ::getsockname(ListenSocket, reinterpret_cast<sockaddr*>(&Address), &Length);
    Port = ntohs(Address.sin_port);
    Thread = std::thread([this] { Serve(); });
}

FRawCaptureServer::~FRawCaptureServer()
{
    ::shutdown(ListenSocket, SHUT_RDWR);
    ::close(ListenSocket);
    Thread.join();
}

FString FRawCaptureServer::BaseURL() const
{
    return LocalURL(Port);
}

void FRawCaptureServer::Serve()
{
    for (;;)
    {
        const int Connection = ::accept(ListenSocket, nullptr, nullptr);
        if (Connection < 0)
        {
            return;
        }
        std::string Bytes;
        char Buffer[65536];
        size_t HeaderEnd = std::string::npos;
        size_t Wanted = 0;
        ssize_t Count = 0;
        while ((HeaderEnd == std::string::npos || Bytes.size() < Wanted) &&
               (Count = ::recv(Connection, Buffer, sizeof(Buffer), 0)) > 0)
        {
            Bytes.append(Buffer, static_cast<size_t>(Count));
            if (HeaderEnd == std::string::npos && (HeaderEnd = Bytes.find("\r\n\r\n")) != std::string::npos)
            {
                const size_t Field = Bytes.find("\r\nContent-Length: ");
                const size_t Length = Field < HeaderEnd ? std::stoul(Bytes.substr(Field + 18)) : 0;
                Wanted = HeaderEnd + 4 + Length;
            }
        }
        if (HeaderEnd != std::string::npos)
        {
            std::lock_guard Lock(Mutex);
            Requests.emplace_back(Bytes.substr(0, HeaderEnd + 4), Bytes.substr(HeaderEnd + 4));
        }
        const std::string Answer = "HTTP/1.1 200 OK\r\nContent-Type: application/json\r\nContent-Length: " +
                                   std::to_string(AnswerBody.size()) + "\r\nConnection: close\r\n\r\n" +
                                   AnswerBody;
        ::send(Connection, Answer.data(), Answer.size(), MSG_NOSIGNAL);
        ::close(Connection);
    }
}

std::vector<FRawRequest> FRawCaptureServer::WaitForRequests(size_t Count)
{
    std::vector<FRawRequest> Arrived;
    TickUntil(
        [&]
        {
            std::lock_guard Lock(Mutex);
            Arrived = Requests;
            return Arrived.size() >= Count;
        },
        std::chrono::seconds(5));
    return Arrived;
}

bool TickUntil(const std::function<bool()>& Done, std::chrono::milliseconds Limit)
{
    const auto Deadline = std::chrono::steady_clock::now() + Limit;
    while (!Done())
    {
        if (std::chrono::steady_clock::now() > Deadline)
        {
            return false;
        }
        FHttpModule::Get().GetHttpManager().Tick(0.001f);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
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
