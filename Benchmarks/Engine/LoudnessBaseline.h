#pragma once

#include "FaceEngine.h"

#include <span>
#include <vector>

namespace EngineBench
{

// The mouth a loudness meter alone would give: one frame per 1/fps with only
// jawOpen set, from nothing 36 dB under the take's loudest frame to fully open 6 dB
// under it. The face engine has to beat this to be worth its model.
std::vector<LipsyncEngine::FFaceFrame> LoudnessFrames(std::span<const float> Samples, int SampleRate,
                                                      int Fps);

} // namespace EngineBench
