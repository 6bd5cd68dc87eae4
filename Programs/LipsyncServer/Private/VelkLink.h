#pragma once

#include "FaceEngine.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

// One answered stream chunk, as the live link sends it: its frames and its audio,
// placed on the stream's clock.
struct FVelkChunk
{
    std::int32_t Stream = 0;
    // The stream's number of the chunk's first frame.
    std::int64_t FirstFrame = 0;
    int Fps = 60;
    std::vector<LipsyncEngine::FFaceFrame> Frames;
    // The chunk's speech as the request carried it, mono.
    std::vector<float> Samples;
    int SampleRate = 0;
    // Seconds of the stream before this chunk.
    double StartSeconds = 0.0;
};

// The server's end of the live link: VMC bundles to Host:VelkPort and audio
// messages to Host:AudioPort, over UDP. Send only queues; a thread of the link's
// own builds and sends the datagrams, so a slow or absent receiver never delays an
// answer. The queue is bounded and a chunk that does not fit is dropped.
class FVelkLink
{
public:
    FVelkLink(const std::string& Host, int VelkPort, int AudioPort);
    ~FVelkLink();
    FVelkLink(const FVelkLink&) = delete;
    FVelkLink& operator=(const FVelkLink&) = delete;

    void Send(FVelkChunk Chunk);

private:
    struct FTarget;

    void Run();
    void SendChunk(const FVelkChunk& Chunk);
    void SendDatagram(const FTarget& Target, const std::vector<std::uint8_t>& Bytes);

    std::unique_ptr<FTarget> Velk;
    std::unique_ptr<FTarget> Audio;
    std::mutex Mutex;
    std::condition_variable Wake;
    std::deque<FVelkChunk> Queue;
    double QueuedSeconds = 0.0;
    std::atomic<bool> bStopping{false};
    // Bytes that may go out before the sender pauses; refilled with time.
    double Allowance = 0.0;
    std::chrono::steady_clock::time_point LastRefill;
    std::thread Sender;
};
