#include "TransportTestServers.h"

#include "Misc/ConfigCacheIni.h"
#include "Setting/CadrelSetting.h"

#include <algorithm>

FLipsyncTestServer::FLipsyncTestServer(bool bInRecord) : bRecord(bInRecord)
{
    Server->Post(".*",
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
    // Connections are kept alive, as a lipsync server keeps them; each holds a worker, and up to
    // 64 clients each open one per request in flight. Stopping waits for idle ones to time out.
    Server->set_keep_alive_max_count(CPPHTTPLIB_KEEPALIVE_MAX_COUNT);
    Server->set_keep_alive_timeout(1);
    Server->new_task_queue = [] { return new httplib::ThreadPool(160); };
    Server->set_tcp_nodelay(true);
    Server.Start();
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
    const std::string Wav = MakeWav(FWavSpec{.SampleRate = SampleRate, .Seconds = Seconds});
    return TArray<uint8>(reinterpret_cast<const uint8*>(Wav.data()), static_cast<int32>(Wav.size()));
}
