#include "HttpTestServers.h"

#include "HAL/PlatformTime.h"
#include "HttpModule.h"
#include "Loopback.h"

#include <unistd.h>

#include <chrono>

FTestServer::FTestServer(std::unique_ptr<httplib::Server> InServer) : Server(std::move(InServer))
{
    // A kept-alive connection would hold stop() up for the keep-alive time-out.
    Server->set_keep_alive_max_count(1);
}

FTestServer::~FTestServer()
{
    Server->stop();
    if (Thread.joinable())
    {
        Thread.join();
    }
}

void FTestServer::Start()
{
    int Listener = -1;
    Server->set_socket_options([&Listener](socket_t Socket) { Listener = Socket; });
    Port = Server->bind_to_any_port("127.0.0.1");
    // cpp-httplib listens with a backlog of 5, which a burst of 64 new connections
    // overflows: the kernel drops them and clients wait for a retransmit.
    ::listen(Listener, SOMAXCONN);
    Thread = std::thread([this] { Server->listen_after_bind(); });
    while (!Server->is_running())
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

FString LocalURL(int Port, const char* Path, const char* Scheme)
{
    return FString::FromUTF8(std::string(Scheme) + "://127.0.0.1:" + std::to_string(Port) + Path);
}

FRawServer::FRawServer(std::string InReply) : Reply(std::move(InReply))
{
    Listener = BindLoopback(SOCK_STREAM, Port);
    listen(Listener, 8);
    Thread = std::thread([this] { Serve(); });
}

FRawServer::~FRawServer()
{
    bStopping = true;
    shutdown(Listener, SHUT_RDWR);
    Thread.join();
    close(Listener);
}

std::vector<std::string> FRawServer::Received()
{
    std::lock_guard<std::mutex> Lock(Mutex);
    return Requests;
}

void FRawServer::Serve()
{
    while (!bStopping)
    {
        const int Connection = accept(Listener, nullptr, nullptr);
        if (Connection < 0)
        {
            return;
        }
        std::string Bytes;
        char Buffer[4096];
        size_t Wanted = std::string::npos;
        while (Bytes.size() < Wanted)
        {
            const ssize_t Count = recv(Connection, Buffer, sizeof(Buffer), 0);
            if (Count <= 0)
            {
                break;
            }
            Bytes.append(Buffer, static_cast<size_t>(Count));
            const size_t HeadEnd = Bytes.find("\r\n\r\n");
            const size_t LengthAt = Bytes.find("Content-Length: ");
            if (HeadEnd != std::string::npos && Wanted == std::string::npos)
            {
                Wanted = HeadEnd + 4 + (LengthAt < HeadEnd ? std::stoul(Bytes.substr(LengthAt + 16)) : 0);
            }
        }
        {
            std::lock_guard<std::mutex> Lock(Mutex);
            Requests.push_back(Bytes);
        }
        send(Connection, Reply.data(), Reply.size(), MSG_NOSIGNAL);
        close(Connection);
    }
}

void FGate::Open()
{
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        bOpen = true;
    }
    Opened.notify_all();
}

void FGate::Wait()
{
    std::unique_lock<std::mutex> Lock(Mutex);
    Opened.wait_for(Lock, std::chrono::seconds(10), [this] { return bOpen; });
}

TSharedRef<IHttpRequest> MakeRequest(const FString& URL, const TCHAR* Verb)
{
    TSharedRef<IHttpRequest> Request = FHttpModule::Get().CreateRequest();
    Request->SetURL(URL);
    Request->SetVerb(Verb);
    return Request;
}

bool TickUntil(const std::function<bool()>& Done, double Seconds)
{
    const double End = FPlatformTime::Seconds() + Seconds;
    while (!Done())
    {
        if (FPlatformTime::Seconds() > End)
        {
            return false;
        }
        FHttpModule::Get().GetHttpManager().Tick(0.0f);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

std::shared_ptr<FCompletion> BindCompletion(const TSharedRef<IHttpRequest>& Request)
{
    auto Result = std::make_shared<FCompletion>();
    Request->OnProcessRequestComplete().BindLambda(
        [Result](FHttpRequestPtr, FHttpResponsePtr Response, bool bSucceeded) {
            *Result = FCompletion{true, bSucceeded, Response};
        });
    return Result;
}

FCompletion AwaitCompletion(const TSharedRef<IHttpRequest>& Request, double Seconds)
{
    const std::shared_ptr<FCompletion> Result = BindCompletion(Request);
    TickUntil([&Result] { return Result->bCompleted; }, Seconds);
    return *Result;
}

FCompletion RunRequest(const TSharedRef<IHttpRequest>& Request, double Seconds)
{
    return Request->ProcessRequest() ? AwaitCompletion(Request, Seconds) : FCompletion{};
}
