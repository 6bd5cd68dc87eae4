#pragma once

#include "VmcPose.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

// One frame as the page shows it, with the time on the receiver's wall clock at which
// its datagram arrived, so that the page can measure its own lag.
struct FViewFrame
{
    int32_t Stream = 0;
    int32_t Number = 0;
    double Time = 0.0;
    double ArrivalMs = 0.0;
    std::vector<std::pair<std::string, float>> Weights;
    FViewAngles Head;
    FViewAngles LeftEye;
    FViewAngles RightEye;
};

// One block of audio on the stream's clock.
struct FViewAudio
{
    int32_t Stream = 0;
    int64_t FirstSample = 0;
    int32_t SampleRate = 0;
    double ArrivalMs = 0.0;
    std::vector<int16_t> Samples;
};
