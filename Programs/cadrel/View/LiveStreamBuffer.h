#pragma once

#include "VelkDatagram.h"
#include "ViewEvents.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <vector>

// The live stream's recent events, shared by the receiver (which adds) and the page's
// event streams (which follow). It keeps only the current stream and at most
// MaxEvents of it, so that a page opened or reloaded mid-stream starts from what is
// still buffered, and memory stays bounded however long a stream runs.
class FLiveStreamBuffer
{
public:
    static constexpr size_t MaxEvents = 20000;

    void AddFrame(const FViewFrame& Frame);
    void AddAudio(const FViewAudio& Audio);
    void CountDatagram(EVelkDatagramKind Kind);
    FViewCounts Counts() const;

    // Events after Cursor (0 from the start of what is kept), waiting up to Wait for one
    // to come; Cursor moves past what is returned.
    std::vector<std::string> Follow(uint64_t& Cursor, std::chrono::milliseconds Wait);
    // Wakes every follower, for a server that is stopping.
    void WakeAll();

private:
    void SwitchStream(int32_t Stream);
    void Append(std::string Event);

    mutable std::mutex Mutex;
    std::condition_variable Added;
    std::deque<std::string> Events;
    uint64_t FirstSequence = 1;
    FViewCounts Current;
    bool bAnyStream = false;
    int64_t LastFrameNumber = -1;
};
