#pragma once

#include "FaceEngine.h"

#include <span>
#include <vector>

namespace EngineBench
{

// The best mouth a loudness meter alone gives: one frame per 1/fps with only jawOpen
// set, open on the frames that are loud for this take (measured against the take's
// own spread of frame levels, so that its gain and noise do not matter). It can
// close for bilabials and rest in silence but never round or spread the lips. The
// face engine has to beat this to be worth its model.
std::vector<LipsyncEngine::FFaceFrame> LoudnessFrames(std::span<const float> Samples, int SampleRate,
                                                      int Fps);

} // namespace EngineBench
