#pragma once

#include "ViewFrame.h"

#include <cstdint>
#include <string>

// The receiver's counts, as the page's status line shows them.
struct FViewCounts
{
    int32_t Stream = 0;
    uint64_t Frames = 0;
    uint64_t MissingFrames = 0;
    uint64_t OutOfOrderFrames = 0;
    uint64_t AudioBlocks = 0;
    uint64_t Malformed = 0;
    uint64_t Oversized = 0;
    uint64_t Foreign = 0;
};

// Server-Sent Events bodies (one JSON object each, on one line) for the page.
std::string FrameEventJson(const FViewFrame& Frame);
std::string AudioEventJson(const FViewAudio& Audio);
std::string CountsEventJson(const FViewCounts& Counts);
