#include "VelkReceiver.h"

#include <chrono>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace
{
// Large enough for any UDP datagram, so that MSG_TRUNC reports an oversized one's true size.
constexpr size_t ReceiveBufferBytes = 65536;
// How often the thread looks up from its sockets to see whether it should stop.
constexpr int PollMs = 50;

double WallClockMs()
{
    using namespace std::chrono;
    return duration<double, std::milli>(system_clock::now().time_since_epoch()).count();
}

bool IsLoopback(const sockaddr_storage& From)
{
    if (From.ss_family == AF_INET)
    {
        const auto& Address = reinterpret_cast<const sockaddr_in&>(From);
        return (ntohl(Address.sin_addr.s_addr) >> 24) == 127;
    }
    if (From.ss_family == AF_INET6)
    {
        const auto& Address = reinterpret_cast<const sockaddr_in6&>(From);
        return IN6_IS_ADDR_LOOPBACK(&Address.sin6_addr) ||
               (IN6_IS_ADDR_V4MAPPED(&Address.sin6_addr) && Address.sin6_addr.s6_addr[12] == 127);
    }
    return false;
}

std::unique_ptr<FVelkDatagramParser> OpenPort(EVelkPortKind Kind, int Port, std::string& Error)
{
    auto Parser = std::make_unique<FVelkDatagramParser>(Kind, std::to_string(Port));
    if (!Parser->Valid())
    {
        Error = std::string("cannot listen for ") + (Kind == EVelkPortKind::Velk ? "VMC" : "audio") +
                " on UDP port " + std::to_string(Port);
        return nullptr;
    }
    return Parser;
}
} // namespace

FVelkReceiver::FVelkReceiver(FLiveStreamBuffer& InBuffer) : Buffer(InBuffer) {}

FVelkReceiver::~FVelkReceiver()
{
    Stop();
}

bool FVelkReceiver::Start(int VelkPort, int AudioPort, bool bInLoopbackOnly, std::string& Error)
{
    bLoopbackOnly = bInLoopbackOnly;
    Velk = OpenPort(EVelkPortKind::Velk, VelkPort, Error);
    Audio = Velk ? OpenPort(EVelkPortKind::Audio, AudioPort, Error) : nullptr;
    if (!Velk || !Audio)
    {
        Velk.reset();
        Audio.reset();
        return false;
    }
    Thread = std::thread([this] { Run(); });
    return true;
}

void FVelkReceiver::Stop()
{
    bStopping = true;
    if (Thread.joinable())
    {
        Thread.join();
    }
}

void FVelkReceiver::Run()
{
    pollfd Sockets[2] = {{Velk->SocketFd(), POLLIN, 0}, {Audio->SocketFd(), POLLIN, 0}};
    while (!bStopping)
    {
        if (poll(Sockets, 2, PollMs) <= 0)
        {
            continue;
        }
        if (Sockets[0].revents != 0)
        {
            ReceiveFrom(*Velk, EVelkPortKind::Velk);
        }
        if (Sockets[1].revents != 0)
        {
            ReceiveFrom(*Audio, EVelkPortKind::Audio);
        }
    }
}

void FVelkReceiver::ReceiveFrom(FVelkDatagramParser& Parser, EVelkPortKind PortKind)
{
    static thread_local std::vector<unsigned char> Bytes(ReceiveBufferBytes);
    // Drain what is queued, but give the other port its turn after a burst.
    for (int Datagram = 0; Datagram < 64; ++Datagram)
    {
        sockaddr_storage From{};
        socklen_t FromLength = sizeof(From);
        // With MSG_TRUNC, Size is the datagram's true size even past the buffer; the parser refuses
        // anything over its port's limit, far below the buffer, before it reads a byte.
        const ssize_t Size = recvfrom(Parser.SocketFd(), Bytes.data(), Bytes.size(), MSG_DONTWAIT | MSG_TRUNC,
                                      reinterpret_cast<sockaddr*>(&From), &FromLength);
        if (Size < 0)
        {
            return;
        }
        if (bLoopbackOnly && !IsLoopback(From))
        {
            Buffer.CountDatagram(EVelkDatagramKind::Foreign);
            continue;
        }
        const double ArrivalMs = WallClockMs();
        const FVelkDatagram Parsed = Parser.Parse(Bytes.data(), static_cast<size_t>(Size));
        Buffer.CountDatagram(Parsed.Kind);
        for (const FVelkMessage& Message : Parsed.Messages)
        {
            if (PortKind == EVelkPortKind::Audio)
            {
                Buffer.AddAudio(FViewAudio{Message.Stream, Message.FirstSample, Message.SampleRate, ArrivalMs,
                                           Message.Samples});
            }
            else if (auto Frame = Assembler.Add(Message, ArrivalMs))
            {
                Buffer.AddFrame(*Frame);
            }
        }
    }
}
