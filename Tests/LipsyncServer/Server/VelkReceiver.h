#pragma once

#include <chrono>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// A live receiver for tests: two UDP sockets on free ports of 127.0.0.1, one for
// the VMC frames and one for the audio, that keep every datagram as it arrived.
class FVelkReceiver
{
public:
    FVelkReceiver();
    ~FVelkReceiver();
    FVelkReceiver(const FVelkReceiver&) = delete;
    FVelkReceiver& operator=(const FVelkReceiver&) = delete;

    int VelkPort() const { return Ports[0]; }
    int AudioPort() const { return Ports[1]; }

    // Waits until at least the given numbers of datagrams have arrived and then
    // nothing more for QuietMs, or TimeoutMs in all.
    void WaitFor(std::size_t VelkCount, std::size_t AudioCount, int QuietMs, int TimeoutMs) const;
    std::vector<std::string> VelkDatagrams() const;
    std::vector<std::string> AudioDatagrams() const;

private:
    void Run();

    int Sockets[2] = {-1, -1};
    int Ports[2] = {0, 0};
    int StopPipe[2] = {-1, -1};
    mutable std::mutex Mutex;
    std::vector<std::string> Received[2];
    std::chrono::steady_clock::time_point LastArrival;
    std::thread Reader;
};

// One OSC message read back with liblo: its address, type tags, and its
// arguments as text (s) or numbers (i, h, f, d); a blob's bytes as text.
struct FOscMessage
{
    std::string Path;
    std::string Types;
    std::vector<std::string> Texts;
    std::vector<double> Numbers;
};

// The messages of one OSC bundle, in order; empty when the datagram is not one
// bundle that liblo accepts.
std::vector<FOscMessage> ReadOscBundle(const std::string& Datagram);
// One unbundled OSC message; an empty Path when liblo refuses the datagram.
FOscMessage ReadOscMessage(const std::string& Datagram);
