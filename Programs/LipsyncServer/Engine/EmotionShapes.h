#pragma once

#include "FaceEngine.h"

namespace LipsyncEngine
{

// How an emotion sets the brows, cheeks, eyes and mouth corners, as weights added
// on top of speech.
std::array<float, NumBlendShapes> EmotionShapes(EEmotion Emotion);

} // namespace LipsyncEngine
