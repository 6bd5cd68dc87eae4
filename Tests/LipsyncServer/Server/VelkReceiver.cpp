#include "VelkReceiver.h"

#include "Loopback.h"

#include <lo/lo.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <cstring>

namespace
{
int OpenUdpSocket(int& OutPort)
{
    const int Socket = BindLoopback(SOCK_DGRAM, OutPort);
    // Room for a whole long chunk, so that the test measures the sender, not this reader.
    const int Buffer = 8 << 20;
    setsockopt(Socket, SOL_SOCKET, SO_RCVBUF, &Buffer, sizeof(Buffer));
    return Socket;
}

// liblo's arguments need not be aligned for their type, so they are copied out.
template <typename T> double Number(const lo_arg* Argument)
{
    T Value;
    std::memcpy(&Value, Argument, sizeof(T));
    return double(Value);
}

void Append(lo_arg** Arguments, const char* Types, int Count, FOscMessage& Out)
{
    for (int Index = 0; Index < Count; ++Index)
    {
        lo_arg* const Argument = Arguments[Index];
        switch (Types[Index])
        {
        case 's':
            Out.Texts.emplace_back(reinterpret_cast<const char*>(Argument));
            break;
        case 'b':
            Out.Texts.emplace_back(static_cast<const char*>(lo_blob_dataptr(Argument)),
                                   lo_blob_datasize(Argument));
            break;
        case 'i':
            Out.Numbers.push_back(Number<std::int32_t>(Argument));
            break;
        case 'h':
            Out.Numbers.push_back(Number<std::int64_t>(Argument));
            break;
        case 'f':
            Out.Numbers.push_back(Number<float>(Argument));
            break;
        case 'd':
            Out.Numbers.push_back(Number<double>(Argument));
            break;
        default:
            break;
        }
    }
}

struct FBundleReading
{
    int Bundles = 0;
    std::vector<FOscMessage> Messages;
};

int KeepMessage(const char* Path, const char* Types, lo_arg** Arguments, int Count, lo_message, void* User)
{
    FOscMessage Message{Path, Types, {}, {}};
    Append(Arguments, Types, Count, Message);
    static_cast<FBundleReading*>(User)->Messages.push_back(std::move(Message));
    return 0;
}

int CountBundle(lo_timetag, void* User)
{
    ++static_cast<FBundleReading*>(User)->Bundles;
    return 0;
}

int EndBundle(void*)
{
    return 0;
}

// A liblo server whose socket is never read: datagrams are handed to it to parse.
// One per thread, as opening a socket for every datagram read would.
struct FOscParser
{
    FOscParser()
    {
        if (Server)
        {
            lo_server_add_method(Server, nullptr, nullptr, KeepMessage, &Reading);
            lo_server_add_bundle_handlers(Server, CountBundle, EndBundle, &Reading);
        }
    }
    ~FOscParser()
    {
        if (Server)
        {
            lo_server_free(Server);
        }
    }

    lo_server Server = lo_server_new_with_proto(nullptr, LO_UDP, nullptr);
    FBundleReading Reading;
};

// Hands one datagram to liblo, which reads a message or a bundle of them.
FBundleReading Dispatch(const std::string& Datagram)
{
    thread_local FOscParser Parser;
    Parser.Reading = {};
    std::string Copy = Datagram;
    if (!Parser.Server || lo_server_dispatch_data(Parser.Server, Copy.data(), Copy.size()) <= 0)
    {
        return {};
    }
    return std::move(Parser.Reading);
}
} // namespace

FVelkReceiver::FVelkReceiver()
{
    Sockets[0] = OpenUdpSocket(Ports[0]);
    Sockets[1] = OpenUdpSocket(Ports[1]);
    if (pipe(StopPipe) == 0)
    {
        Reader = std::thread([this] { Run(); });
    }
}

FVelkReceiver::~FVelkReceiver()
{
    if (Reader.joinable())
    {
        (void)!write(StopPipe[1], "x", 1);
        Reader.join();
    }
    for (const int Descriptor : {Sockets[0], Sockets[1], StopPipe[0], StopPipe[1]})
    {
        close(Descriptor);
    }
}

void FVelkReceiver::Run()
{
    std::string Buffer(65536, '\0');
    pollfd Polls[3] = {{Sockets[0], POLLIN, 0}, {Sockets[1], POLLIN, 0}, {StopPipe[0], POLLIN, 0}};
    while (poll(Polls, 3, -1) > 0 && !(Polls[2].revents & POLLIN))
    {
        for (int Port = 0; Port < 2; ++Port)
        {
            if (Polls[Port].revents & POLLIN)
            {
                const ssize_t Got = recv(Sockets[Port], Buffer.data(), Buffer.size(), 0);
                std::lock_guard Lock(Mutex);
                LastArrival = std::chrono::steady_clock::now();
                if (Got >= 0)
                {
                    Received[Port].emplace_back(Buffer.data(), std::size_t(Got));
                }
            }
        }
    }
}

void FVelkReceiver::WaitFor(std::size_t VelkCount, std::size_t AudioCount, int QuietMs, int TimeoutMs) const
{
    using namespace std::chrono;
    const auto Start = steady_clock::now();
    for (;;)
    {
        std::this_thread::sleep_for(milliseconds(10));
        std::lock_guard Lock(Mutex);
        const auto Now = steady_clock::now();
        const bool bEnough = Received[0].size() >= VelkCount && Received[1].size() >= AudioCount;
        if ((bEnough && Now - std::max(LastArrival, Start) >= milliseconds(QuietMs)) ||
            Now - Start >= milliseconds(TimeoutMs))
        {
            return;
        }
    }
}

std::vector<std::string> FVelkReceiver::VelkDatagrams() const
{
    std::lock_guard Lock(Mutex);
    return Received[0];
}

std::vector<std::string> FVelkReceiver::AudioDatagrams() const
{
    std::lock_guard Lock(Mutex);
    return Received[1];
}

std::vector<FOscMessage> ReadOscBundle(const std::string& Datagram)
{
    FBundleReading Reading = Dispatch(Datagram);
    return Reading.Bundles == 1 ? Reading.Messages : std::vector<FOscMessage>{};
}

FOscMessage ReadOscMessage(const std::string& Datagram)
{
    FBundleReading Reading = Dispatch(Datagram);
    return Reading.Bundles == 0 && Reading.Messages.size() == 1 ? Reading.Messages[0] : FOscMessage{};
}
