#pragma once

#include "FaceEngine.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

// The only state the server keeps: per stream (ZELMainIndex), the engine that
// animated its last chunk, so the next chunk continues where that one stopped.
// Bounded in count (the least recently used goes first) and forgotten when idle.
// A chunk of a stream not held here, or not later than the last one seen (a repeat
// or a restarted stream), starts from rest: behind a load balancer a chunk may
// land on any instance.
// Where a stream stands on its own clock: frames answered and seconds of audio
// received so far. The live link numbers frames and samples from it.
struct FStreamClock
{
    std::int64_t Frames = 0;
    double Seconds = 0.0;
};

class FStreamStates
{
public:
    using FClock = std::chrono::steady_clock;
    using FEngine = std::unique_ptr<LipsyncEngine::FFaceEngine>;

    FStreamStates(std::size_t MaxStreams, FClock::duration IdleTimeout);

    // The engine to animate chunk Index of stream MainIndex with, and the stream's
    // clock (zero when the engine starts from rest); the stream's entry is taken
    // out, so two chunks of one stream never share an engine.
    FEngine Take(int MainIndex, int Index, const LipsyncEngine::FAnimationOptions& Options,
                 FStreamClock& OutClock);

    // Keeps the engine and the clock for the stream's next chunk, unless a later
    // chunk of the same stream was put back meanwhile.
    void Keep(int MainIndex, int Index, FEngine Engine, FStreamClock Clock);

    std::size_t Count() const;

private:
    struct FEntry
    {
        FEngine Engine;
        int Index = 0;
        FClock::time_point LastUse;
        FStreamClock StreamClock;
    };

    void ForgetIdle(FClock::time_point Now);

    const std::size_t MaxStreams;
    const FClock::duration IdleTimeout;
    mutable std::mutex Mutex;
    std::map<int, FEntry> Entries;
};
