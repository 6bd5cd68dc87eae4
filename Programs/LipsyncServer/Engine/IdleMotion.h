#pragma once

#include "FaceEngine.h"

#include <cstdint>
#include <random>

namespace LipsyncEngine
{

// Blinks, eye saccades and neck sway: the motion of a face that is alive between
// and during words. Driven by a fixed-seed generator stepped once per analysis
// frame, so the same audio always gives the same motion.
class FIdleMotion
{
public:
    // Advances one analysis frame; Loudness (0-1) lets the head nod a little with
    // stressed syllables.
    void Step(float Loudness);

    // Writes blinks always, eye bones and eye-look shapes when bEyes, the neck bone
    // when bNeck; bones that are off stay at zero.
    void Apply(bool bEyes, bool bNeck, FFaceFrame& Frame) const;

private:
    float Uniform(float Low, float High);

    std::mt19937 Random{0x5eed};
    std::int64_t Step10ms = 0;
    std::int64_t NextBlink = 250;
    std::int64_t BlinkStart = -100;
    std::int64_t NextSaccade = 60;
    float GazeYaw = 0.0f;
    float GazePitch = 0.0f;
    float TargetYaw = 0.0f;
    float TargetPitch = 0.0f;
    float Nod = 0.0f;
};

} // namespace LipsyncEngine
