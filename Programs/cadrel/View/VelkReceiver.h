#pragma once

#include "LiveStreamBuffer.h"
#include "VelkDatagramParser.h"
#include "VelkFrameAssembler.h"

#include <atomic>
#include <string>
#include <thread>

// The live link's receiving end: the Velk port (VMC frames) and the audio port, read
// on one thread into the live stream buffer. No datagram stops it: whatever does not
// parse is counted and dropped.
class FVelkReceiver
{
public:
    explicit FVelkReceiver(FLiveStreamBuffer& Buffer);
    ~FVelkReceiver();
    FVelkReceiver(const FVelkReceiver&) = delete;
    FVelkReceiver& operator=(const FVelkReceiver&) = delete;

    // Ports 0 pick free ones. liblo listens on every interface; with bLoopbackOnly, datagrams
    // from other machines are counted as foreign and dropped. On failure Error names the port.
    bool Start(int VelkPort, int AudioPort, bool bLoopbackOnly, std::string& Error);
    void Stop();

    int VelkPort() const { return Velk ? Velk->Port() : 0; }
    int AudioPort() const { return Audio ? Audio->Port() : 0; }

private:
    void Run();
    void ReceiveFrom(FVelkDatagramParser& Parser, EVelkPortKind PortKind);

    FLiveStreamBuffer& Buffer;
    std::unique_ptr<FVelkDatagramParser> Velk;
    std::unique_ptr<FVelkDatagramParser> Audio;
    FVelkFrameAssembler Assembler;
    bool bLoopbackOnly = true;
    std::atomic<bool> bStopping{false};
    std::thread Thread;
};
