#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

// A socket of Type (SOCK_STREAM, SOCK_DGRAM) bound to a free port of 127.0.0.1,
// whose number goes to OutPort. Nothing listens until the caller says so.
inline int BindLoopback(int Type, int& OutPort)
{
    const int Socket = ::socket(AF_INET, Type | SOCK_CLOEXEC, 0);
    sockaddr_in Address{};
    Address.sin_family = AF_INET;
    Address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t Length = sizeof(Address);
    ::bind(Socket, reinterpret_cast<sockaddr*>(&Address), Length);
    ::getsockname(Socket, reinterpret_cast<sockaddr*>(&Address), &Length);
    OutPort = ntohs(Address.sin_port);
    return Socket;
}
