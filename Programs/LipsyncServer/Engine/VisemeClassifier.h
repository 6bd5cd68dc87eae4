#pragma once

#include "SpeakerNormaliser.h"

#include <array>
#include <cstddef>

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

// Inputs of the classifier: the normalised features, scaled to similar ranges, and
// the products that let a linear model carve out the corners of the vowel space.
inline constexpr std::size_t NumClassifierInputs = 19;
std::array<float, NumClassifierInputs> ClassifierInputs(const FNormalisedFeatures& Features);

// A softmax over the inputs: the share of each viseme in the frame.
FVisemeWeights ClassifyViseme(const FNormalisedFeatures& Features);

} // namespace LipsyncEngine
