#pragma once

#include "FeatureNormaliser.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace LipsyncEngine
{

// What the mouth does for a sound: lips closed (p b m), open vowel, rounded (u: oU
// w), spread (i: eI), silence, or any other sound.
enum class EViseme : std::size_t
{
    Closed,
    Open,
    Rounded,
    Spread,
    Silence,
    Other,
    Count
};
inline constexpr std::size_t NumVisemes = static_cast<std::size_t>(EViseme::Count);
using FVisemeWeights = std::array<float, NumVisemes>;

// A small multilayer perceptron over the features of the newest frame and a few
// before it, trained offline (tools/engine-training) on many voices and recording
// conditions. It gives the share of each viseme at the newest frame.
class FVisemeNetwork
{
public:
    FVisemeNetwork();

    // Frames in order, continuing from the previous call: one result per frame.
    std::vector<FVisemeWeights> Classify(std::span<const FFrameFeatures> Frames);

private:
    void Remember(const FFrameFeatures& Features);

    // The recent frames, oldest first, zeros before the first.
    std::vector<float> History;
};

} // namespace LipsyncEngine
