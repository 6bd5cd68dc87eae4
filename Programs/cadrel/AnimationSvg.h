#pragma once

#include "CadrelBlendShapeType.h"

#include <span>
#include <string>

// A plot of the animation for a browser: the main mouth curves (jaw open, mouth
// close, funnel, pucker, and smile and stretch as the mean of their left and right
// shapes) over time, only those the animation names, each in its colour with a
// legend; under them the waveform of Mono (left out when Mono is empty or the
// sample rate is not positive); a time axis in seconds (in frames when the frame
// rate is not positive); a weight axis from 0 to 1; and Title. Its size grows with
// the plot's width, not with the length of the animation or the audio.
std::string AnimationToSvg(const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                           const std::string& Title);
