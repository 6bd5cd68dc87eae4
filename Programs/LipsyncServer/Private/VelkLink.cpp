#include "VelkLink.h"

#include "VelkAudio.h"
#include "VelkPackets.h"

#include <netdb.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cmath>
#include <cstdio>
#include <cstring>

namespace
{
// Chunks may wait while the sender is busy, up to these bounds; the rest is dropped.
constexpr std::size_t MaxQueuedChunks = 64;
constexpr double MaxQueuedSeconds = 120.0;

// A receiver reads its socket between other work; bursts larger than its receive
// buffer (about 200 KiB by default on Linux) would be lost, so the sender paces
// itself at many times the live rate (60 frames of about 2.8 KB a second).
constexpr double BurstBytes = 64.0 * 1024.0;
constexpr double BytesPerSecond = 8.0 * 1024.0 * 1024.0;

constexpr int SenderNice = 5;

double Duration(const FVelkChunk& Chunk)
{
    return Chunk.SampleRate > 0 ? double(Chunk.Samples.size()) / Chunk.SampleRate : 0.0;
}
} // namespace

// A resolved UDP destination with a socket of its family.
struct FVelkLink::FTarget
{
    int Socket = -1;
    sockaddr_storage Address{};
    socklen_t Length = 0;

    ~FTarget()
    {
        if (Socket >= 0)
        {
            close(Socket);
        }
    }

    static std::unique_ptr<FTarget> Resolve(const std::string& Host, int Port)
    {
        addrinfo Hints{};
        Hints.ai_family = AF_UNSPEC;
        Hints.ai_socktype = SOCK_DGRAM;
        addrinfo* Found = nullptr;
        if (Port <= 0 || getaddrinfo(Host.c_str(), std::to_string(Port).c_str(), &Hints, &Found) != 0)
        {
            return nullptr;
        }
        auto Target = std::make_unique<FTarget>();
        // Unconnected, so that the refusals of a receiver that is not running
        // (ICMP port unreachable) are never reported back as send errors.
        Target->Socket = socket(Found->ai_family, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        std::memcpy(&Target->Address, Found->ai_addr, Found->ai_addrlen);
        Target->Length = Found->ai_addrlen;
        freeaddrinfo(Found);
        if (Target->Socket < 0)
        {
            return nullptr;
        }
        return Target;
    }
};

FVelkLink::FVelkLink(const std::string& Host, int VelkPort, int AudioPort)
    : Velk(FTarget::Resolve(Host, VelkPort)), Audio(FTarget::Resolve(Host, AudioPort)), Allowance(BurstBytes),
      LastRefill(std::chrono::steady_clock::now())
{
    if (!Velk || !Audio)
    {
        std::fprintf(stderr,
                     "live link: cannot send to \"%s\" (ports %d and %d); nothing will be sent there\n",
                     Host.c_str(), VelkPort, AudioPort);
    }
    Sender = std::thread([this] { Run(); });
}

FVelkLink::~FVelkLink()
{
    {
        std::lock_guard Lock(Mutex);
        bStopping = true;
    }
    Wake.notify_all();
    Sender.join();
}

void FVelkLink::Send(FVelkChunk Chunk)
{
    const double Seconds = Duration(Chunk);
    {
        std::lock_guard Lock(Mutex);
        const bool bFits =
            Queue.empty() || (Queue.size() < MaxQueuedChunks && QueuedSeconds + Seconds <= MaxQueuedSeconds);
        if (!bFits)
        {
            return;
        }
        QueuedSeconds += Seconds;
        Queue.push_back(std::move(Chunk));
    }
    Wake.notify_one();
}

void FVelkLink::Run()
{
    // Building a frame's bundle costs about as much as answering a frame; on a busy
    // machine the answers come first. On Linux a thread has a nice value of its own.
    setpriority(PRIO_PROCESS, pid_t(gettid()), SenderNice);
    for (;;)
    {
        FVelkChunk Chunk;
        {
            std::unique_lock Lock(Mutex);
            Wake.wait(Lock, [this] { return bStopping || !Queue.empty(); });
            if (bStopping)
            {
                return;
            }
            Chunk = std::move(Queue.front());
            Queue.pop_front();
            QueuedSeconds = Queue.empty() ? 0.0 : QueuedSeconds - Duration(Chunk);
        }
        SendChunk(Chunk);
    }
}

void FVelkLink::SendChunk(const FVelkChunk& Chunk)
{
    // The audio first: a receiver starts playing when it has sound, and the frames
    // that go with it follow within milliseconds.
    if (Audio)
    {
        const auto First = std::int64_t(std::llround(Chunk.StartSeconds * VelkPackets::AudioRate));
        const auto End =
            std::int64_t(std::llround((Chunk.StartSeconds + Duration(Chunk)) * VelkPackets::AudioRate));
        const std::vector<std::int16_t> Pcm =
            LinkAudio(Chunk.Samples, Chunk.SampleRate, std::size_t(std::max<std::int64_t>(End - First, 0)));
        for (std::size_t Start = 0; Start < Pcm.size() && !bStopping; Start += VelkPackets::MaxAudioSamples)
        {
            const auto Block = std::span<const std::int16_t>(Pcm).subspan(Start);
            SendDatagram(*Audio, VelkPackets::AudioMessage(Chunk.Stream, First + std::int64_t(Start), Block));
        }
    }
    if (Velk)
    {
        for (std::size_t Index = 0; Index < Chunk.Frames.size() && !bStopping; ++Index)
        {
            const std::int64_t Number = Chunk.FirstFrame + std::int64_t(Index);
            SendDatagram(*Velk, VelkPackets::FrameBundle(Chunk.Stream, std::int32_t(Number),
                                                         double(Number) / Chunk.Fps, Chunk.Frames[Index]));
        }
    }
}

void FVelkLink::SendDatagram(const FTarget& Target, const std::vector<std::uint8_t>& Bytes)
{
    if (bStopping)
    {
        return;
    }
    const auto Now = std::chrono::steady_clock::now();
    Allowance = std::min(BurstBytes, Allowance + BytesPerSecond *
                                                     std::chrono::duration<double>(Now - LastRefill).count());
    LastRefill = Now;
    if (Allowance < double(Bytes.size()))
    {
        const double Wait = (double(Bytes.size()) - Allowance) / BytesPerSecond;
        std::this_thread::sleep_for(std::chrono::duration<double>(Wait));
        Allowance = double(Bytes.size());
        LastRefill = std::chrono::steady_clock::now();
    }
    Allowance -= double(Bytes.size());
    const auto Address = reinterpret_cast<const sockaddr*>(&Target.Address);
    if (sendto(Target.Socket, Bytes.data(), Bytes.size(), MSG_NOSIGNAL, Address, Target.Length) < 0 &&
        errno == EAGAIN)
    {
        // The socket's send buffer is full for a moment; one short wait, then the
        // datagram is given up like any other that UDP loses.
        pollfd Poll{Target.Socket, POLLOUT, 0};
        if (poll(&Poll, 1, 10) > 0)
        {
            sendto(Target.Socket, Bytes.data(), Bytes.size(), MSG_NOSIGNAL, Address, Target.Length);
        }
    }
}
