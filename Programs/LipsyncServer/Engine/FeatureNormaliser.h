#pragma once

#include "MelSpectrum.h"

#include <array>
#include <cstddef>

namespace LipsyncEngine
{

// One frame as the viseme network sees it: the spectral shape against the
// recording's recent average (which cancels the microphone, the room's colour and
// the level), then the level against the recent loud speech and against the noise
// floor, all scaled to about unit spread.
inline constexpr std::size_t NumFrameFeatures = NumMelBands + 2;
inline constexpr std::size_t LevelFeature = NumMelBands;
inline constexpr std::size_t AboveFloorFeature = NumMelBands + 1;
using FFrameFeatures = std::array<float, NumFrameFeatures>;

// Causal: a frame depends only on it and the frames before it.
class FFeatureNormaliser
{
public:
    FFrameFeatures Normalise(const FMelFrame& Frame);

    // The last frame's level in dB below the recent loud speech (0 at its level).
    float LevelDb() const { return Level; }

private:
    void TrackLevel(float EnergyDb);

    bool bStarted = false;
    float Peak = 0.0f;
    float Floor = 0.0f;
    float Level = 0.0f;
    float AboveFloor = 0.0f;
    float SpeechFrames = 0.0f;
    std::array<float, NumMelBands> MeanShape{};
};

} // namespace LipsyncEngine
