#include "IdleConnections.h"

#include <netdb.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <netinet/in.h>

#include <charconv>
#include <filesystem>
#include <optional>
#include <system_error>
#include <vector>

namespace
{
int PortOf(const sockaddr_storage& Address)
{
    if (Address.ss_family == AF_INET)
    {
        return ntohs(reinterpret_cast<const sockaddr_in&>(Address).sin_port);
    }
    if (Address.ss_family == AF_INET6)
    {
        return ntohs(reinterpret_cast<const sockaddr_in6&>(Address).sin6_port);
    }
    return -1;
}

// The peer of a connection accepted on Port, written as cpp-httplib writes a
// request's remote address; nothing for any other descriptor.
std::optional<std::pair<std::string, int>> AcceptedPeer(int Descriptor, int Port)
{
    struct stat Status = {};
    if (fstat(Descriptor, &Status) != 0 || !S_ISSOCK(Status.st_mode))
    {
        return std::nullopt;
    }
    sockaddr_storage Local = {};
    sockaddr_storage Peer = {};
    socklen_t LocalSize = sizeof(Local);
    socklen_t PeerSize = sizeof(Peer);
    // The listening socket has no peer; connections this process opened have
    // another local port.
    if (getsockname(Descriptor, reinterpret_cast<sockaddr*>(&Local), &LocalSize) != 0 ||
        PortOf(Local) != Port || getpeername(Descriptor, reinterpret_cast<sockaddr*>(&Peer), &PeerSize) != 0)
    {
        return std::nullopt;
    }
    char Host[NI_MAXHOST] = {};
    if (getnameinfo(reinterpret_cast<const sockaddr*>(&Peer), PeerSize, Host, sizeof(Host), nullptr, 0,
                    NI_NUMERICHOST) != 0)
    {
        return std::nullopt;
    }
    return std::make_pair(std::string(Host), PortOf(Peer));
}

std::vector<int> OpenDescriptors()
{
    std::vector<int> Descriptors;
    std::error_code Error;
    for (const auto& Entry : std::filesystem::directory_iterator("/proc/self/fd", Error))
    {
        const std::string Name = Entry.path().filename().string();
        int Descriptor = -1;
        if (std::from_chars(Name.data(), Name.data() + Name.size(), Descriptor).ec == std::errc())
        {
            Descriptors.push_back(Descriptor);
        }
    }
    return Descriptors;
}
} // namespace

void FIdleConnections::MarkBusy(const httplib::Request& Request)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    Busy.emplace(Request.remote_addr, Request.remote_port);
}

void FIdleConnections::MarkDone(const httplib::Request& Request)
{
    std::lock_guard<std::mutex> Lock(Mutex);
    const auto It = Busy.find(FPeer(Request.remote_addr, Request.remote_port));
    if (It != Busy.end())
    {
        Busy.erase(It);
    }
}

void FIdleConnections::ShutIdle(int Port)
{
    // Held throughout, so that no request is marked while the connections are
    // looked at; only headers read in the instant before the lock go unmarked.
    std::lock_guard<std::mutex> Lock(Mutex);
    for (const int Descriptor : OpenDescriptors())
    {
        const auto Peer = AcceptedPeer(Descriptor, Port);
        int Waiting = 0;
        if (Peer && !Busy.contains(*Peer) && ioctl(Descriptor, FIONREAD, &Waiting) == 0 && Waiting == 0)
        {
            shutdown(Descriptor, SHUT_RD);
        }
    }
}
