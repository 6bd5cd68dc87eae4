#pragma once

#include "VelkDatagram.h"

#include <lo/lo.h>

#include <string>

// Decodes the live link's datagrams with liblo and checks every message against the
// link's wire format. It owns the liblo server whose UDP socket receives them, so the
// receiver reads that socket and hands each datagram here, exactly as liblo itself
// would dispatch it.
class FVelkDatagramParser
{
public:
    // Port "0" picks a free port. Valid() tells whether the socket could be opened.
    FVelkDatagramParser(EVelkPortKind PortKind, const std::string& Port);
    ~FVelkDatagramParser();
    FVelkDatagramParser(const FVelkDatagramParser&) = delete;
    FVelkDatagramParser& operator=(const FVelkDatagramParser&) = delete;

    bool Valid() const { return Server != nullptr; }
    int SocketFd() const;
    int Port() const;

    FVelkDatagram Parse(const void* Data, size_t Size);

private:
    static int OnMessage(const char* Path, const char* Types, lo_arg** Argv, int Argc, lo_message Message,
                         void* UserData);
    void Accept(const char* Path, const char* Types, lo_arg** Argv, int Argc);

    EVelkPortKind PortKind;
    lo_server Server = nullptr;
    FVelkDatagram Current;
    bool bBadMessage = false;
    bool bKnownMessage = false;
};
