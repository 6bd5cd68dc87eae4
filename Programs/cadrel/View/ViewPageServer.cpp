#include "ViewPageServer.h"

#include "CadrelWeb.h"

#include <chrono>

namespace
{
// Each open page holds one worker for its event stream; enough for a few tabs and their reloads,
// whose old streams linger until their next write fails.
constexpr size_t Workers = 32;

// How long an event stream waits for news before sending the counts again; also how soon
// it notices that the page has gone or the server is stopping.
constexpr auto CountsInterval = std::chrono::milliseconds(250);

std::string SseEvent(const std::string& Json)
{
    return "data: " + Json + "\n\n";
}
} // namespace

FViewPageServer::FViewPageServer(FLiveStreamBuffer& InBuffer) : Buffer(InBuffer) {}

FViewPageServer::~FViewPageServer()
{
    Stop();
}

bool FViewPageServer::Start(const std::string& Bind, int Port, std::string& Error)
{
    Server.new_task_queue = [] { return new httplib::ThreadPool(Workers); };
    Server.Get("/", [this](const httplib::Request&, httplib::Response& Response)
               { ServeAsset("view.html", "text/html; charset=utf-8", Response); });
    Server.Get("/face.js", [this](const httplib::Request&, httplib::Response& Response)
               { ServeAsset("face.js", "text/javascript; charset=utf-8", Response); });
    Server.Get("/view.js", [this](const httplib::Request&, httplib::Response& Response)
               { ServeAsset("view.js", "text/javascript; charset=utf-8", Response); });
    Server.Get("/events",
               [this](const httplib::Request&, httplib::Response& Response) { ServeEvents(Response); });

    BoundPort = Port == 0 ? Server.bind_to_any_port(Bind) : (Server.bind_to_port(Bind, Port) ? Port : -1);
    if (BoundPort <= 0)
    {
        Error = "cannot listen for the page on " + Bind + ":" + std::to_string(Port);
        return false;
    }
    Host = Bind.find(':') != std::string::npos ? "[" + Bind + "]" : Bind;
    Thread = std::thread([this] { Server.listen_after_bind(); });
    return true;
}

void FViewPageServer::Stop()
{
    bStopping = true;
    Buffer.WakeAll();
    Server.stop();
    if (Thread.joinable())
    {
        Thread.join();
    }
}

std::string FViewPageServer::Url() const
{
    return "http://" + Host + ":" + std::to_string(BoundPort) + "/";
}

void FViewPageServer::ServeAsset(const std::string& Name, const char* ContentType,
                                 httplib::Response& Response) const
{
    const std::string_view Bytes = CadrelWeb::Asset(Name);
    Response.set_header("Cache-Control", "no-store");
    Response.set_content(std::string(Bytes), ContentType);
}

void FViewPageServer::ServeEvents(httplib::Response& Response)
{
    Response.set_header("Cache-Control", "no-store");
    auto Cursor = std::make_shared<uint64_t>(0);
    Response.set_chunked_content_provider("text/event-stream",
                                          [this, Cursor](size_t, httplib::DataSink& Sink)
                                          {
                                              std::string Out;
                                              for (const std::string& Event :
                                                   Buffer.Follow(*Cursor, CountsInterval))
                                              {
                                                  Out += SseEvent(Event);
                                              }
                                              Out += SseEvent(CountsEventJson(Buffer.Counts()));
                                              return !bStopping && Sink.write(Out.data(), Out.size());
                                          });
}
