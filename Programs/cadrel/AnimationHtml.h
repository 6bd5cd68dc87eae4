#pragma once

#include "CadrelBlendShapeType.h"

#include <span>
#include <string>

// The animation as one page that plays it from disk with no server: the face and
// player scripts inlined, the animation as its JSON answer, and Mono at SampleRate
// as a 16-bit WAV in base64 (no sound when Mono is empty or the rate is not
// positive). Nothing embedded can end its script element early.
std::string AnimationToHtml(const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                            const std::string& Title);
