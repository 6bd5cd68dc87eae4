#include "LipsyncServer.h"

#include "AccessLog.h"
#include "IdleConnections.h"
#include "LipsyncEndpoints.h"

#include <httplib.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <atomic>
#include <chrono>
#include <thread>

namespace
{
FRequestError LibraryRefusal(int Status, const httplib::Request& Request, std::size_t MaxBody)
{
    switch (Status)
    {
    case 404:
        return MakeError(Status, "path", "no endpoint " + Request.method + " " + Request.path);
    case 413:
        return MakeError(Status, "body", "the body is larger than " + std::to_string(MaxBody) + " bytes");
    default:
        return MakeError(Status, "", "the request is not well-formed HTTP");
    }
}
} // namespace

struct FLipsyncServer::FImpl
{
    explicit FImpl(FLipsyncServerOptions InOptions) : Options(std::move(InOptions)), Endpoints(Options) {}

    void Configure();

    FLipsyncServerOptions Options;
    httplib::Server Http;
    FLipsyncEndpoints Endpoints;
    FIdleConnections Connections;
    std::thread Listener;
    std::atomic<bool> bListenerDone{false};
    socket_t ListenSocket = INVALID_SOCKET;
    int BoundPort = -1;
};

void FLipsyncServer::FImpl::Configure()
{
    const std::size_t Threads = std::size_t(std::max(Options.Threads, 1));
    Http.new_task_queue = [Threads] { return new httplib::ThreadPool(Threads); };
    // Answers are written in one piece; without this Nagle's algorithm holds the
    // tail of an answer back until the client acknowledges the head.
    Http.set_tcp_nodelay(true);
    // A kept-alive client reconnects less often; each reconnect costs a handshake.
    Http.set_keep_alive_max_count(1000);
    Http.set_keep_alive_timeout(std::max(Options.KeepAliveSeconds, 0));
    // cpp-httplib reads and drops an announced body over the limit and answers 413
    // (so the client sees the answer); chunked bodies are counted by ReadForm.
    Http.set_payload_max_length(Options.MaxBody);
    Http.set_pre_routing_handler(
        [this](const httplib::Request& Request, httplib::Response&)
        {
            AccessLog::MarkStart();
            Connections.MarkBusy(Request);
            return httplib::Server::HandlerResponse::Unhandled;
        });
    // Refusals cpp-httplib makes itself (unknown path, malformed request, 413)
    // get the same JSON error body as the server's own.
    Http.set_error_handler(httplib::Server::HandlerWithResponse(
        [MaxBody = Options.MaxBody](const httplib::Request& Request, httplib::Response& Response)
        {
            if (!Response.body.empty())
            {
                return httplib::Server::HandlerResponse::Unhandled;
            }
            Refuse(Response, LibraryRefusal(Response.status, Request, MaxBody));
            return httplib::Server::HandlerResponse::Handled;
        }));
    Http.set_exception_handler(
        [](const httplib::Request&, httplib::Response& Response, std::exception_ptr)
        { Refuse(Response, MakeError(500, "", "the server failed to answer this request")); });
    // cpp-httplib calls its logger once an answer is written.
    Http.set_logger(
        [this](const httplib::Request& Request, const httplib::Response& Response)
        {
            Connections.MarkDone(Request);
            if (!Options.bQuiet)
            {
                AccessLog::Write(Request, Response);
            }
        });
    Endpoints.Register(Http);
}

FLipsyncServer::FLipsyncServer(FLipsyncServerOptions Options)
    : Impl(std::make_unique<FImpl>(std::move(Options)))
{
}

FLipsyncServer::~FLipsyncServer()
{
    Stop();
    Wait();
}

bool FLipsyncServer::Start(std::string& OutError)
{
    FImpl& Server = *Impl;
    Server.Configure();
    const FLipsyncServerOptions& Options = Server.Options;
    // cpp-httplib listens with a backlog of 5: a burst of new clients overflows it
    // and the kernel drops their connections. Listening again on the bound socket
    // raises the backlog.
    // SO_REUSEADDR without cpp-httplib's default SO_REUSEPORT, so that a port in use
    // is an error rather than silently shared with another server. Accepted
    // sockets inherit TCP_NODELAY from this one.
    Server.Http.set_socket_options(
        [&Server](socket_t Socket)
        {
            const int On = 1;
            setsockopt(Socket, SOL_SOCKET, SO_REUSEADDR, &On, sizeof(On));
            Server.ListenSocket = Socket;
        });
    // cpp-httplib reports only that binding failed; the system's reason is left in errno.
    errno = 0;
    if (Options.Port == 0)
    {
        Server.BoundPort = Server.Http.bind_to_any_port(Options.Bind);
    }
    else if (Server.Http.bind_to_port(Options.Bind, Options.Port))
    {
        Server.BoundPort = Options.Port;
    }
    if (Server.BoundPort <= 0 || ::listen(Server.ListenSocket, SOMAXCONN) != 0)
    {
        const int Reason = errno;
        OutError = "cannot listen on " + Options.Bind + ":" + std::to_string(Options.Port) +
                   (Reason != 0 ? std::string(": ") + std::strerror(Reason) : std::string());
        return false;
    }
    Server.Listener = std::thread(
        [&Server]
        {
            Server.Http.listen_after_bind();
            Server.bListenerDone = true;
        });
    // The socket queues connections from bind on; waiting for the accept loop
    // makes Stop, called right after Start, reach a running server.
    while (!Server.Http.is_running() && !Server.bListenerDone)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

int FLipsyncServer::Port() const
{
    return Impl->BoundPort;
}

std::string FLipsyncServer::BaseUrl() const
{
    const std::string& Host = Impl->Options.Bind;
    const bool bIpv6 = Host.find(':') != std::string::npos;
    return "http://" + (bIpv6 ? "[" + Host + "]" : Host) + ":" + std::to_string(Impl->BoundPort);
}

void FLipsyncServer::Stop()
{
    // Stopped first, so that a connection busy now closes after its answer
    // instead of waiting for a next request.
    Impl->Http.stop();
    if (Impl->BoundPort > 0)
    {
        Impl->Connections.ShutIdle(Impl->BoundPort);
    }
}

void FLipsyncServer::Wait()
{
    if (Impl->Listener.joinable())
    {
        Impl->Listener.join();
    }
}
