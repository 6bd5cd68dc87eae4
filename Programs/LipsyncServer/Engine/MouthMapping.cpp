#include "MouthMapping.h"

#include "BlendShape.h"

#include <algorithm>

namespace LipsyncEngine
{
namespace
{
using namespace EBlendShape;

// Share of the way to the target that one 10 ms step moves, rising and falling.
struct FRate
{
    float Attack;
    float Release;
};

// Lips close faster than they part, and the jaw follows loudness closely; lip
// shapes build up over a few frames so that a short sound only colours them.
constexpr FRate VisemeRate = {0.9f, 0.8f};
constexpr FRate JawRate = {0.7f, 0.6f};
constexpr FRate LipCloseRate = {0.85f, 0.6f};
constexpr FRate ShapeRate = {0.75f, 0.6f};

float Approach(float Current, float Target, FRate Rate)
{
    return Current + (Target > Current ? Rate.Attack : Rate.Release) * (Target - Current);
}

float Share(const FVisemeWeights& Visemes, EViseme Viseme)
{
    return Visemes[static_cast<std::size_t>(Viseme)];
}

// Loudness opens the jaw a little further: from half way 30 dB under the
// speaker's loud speech to fully at its level.
float Openness(float LevelDb)
{
    return 0.5f + 0.5f * std::clamp((LevelDb + 30.0f) / 24.0f, 0.0f, 1.0f);
}

// A lip shape shows once its viseme leads by more than 30% of the frame: back open
// vowels (father, lot) sound much like rounded ones, and the network hedges
// between them.
float Dominant(float Lead)
{
    return std::clamp((Lead - 0.3f) / 0.4f, 0.0f, 1.0f);
}

void SetPair(FWeights& Weights, std::size_t Left, std::size_t Right, float Value)
{
    Weights[Left] = Value;
    Weights[Right] = Value;
}
} // namespace

void FMouthMapper::Step(const FVisemeWeights& Visemes, float LevelDb, FWeights& Weights)
{
    for (std::size_t Index = 0; Index < NumVisemes; ++Index)
    {
        Smoothed[Index] = Approach(Smoothed[Index], Visemes[Index], VisemeRate);
    }
    const float Closed = Share(Smoothed, EViseme::Closed);
    const float Open = Share(Smoothed, EViseme::Open);
    const float Rounded = Share(Smoothed, EViseme::Rounded);
    const float Spread = Share(Smoothed, EViseme::Spread);
    const float Other = Share(Smoothed, EViseme::Other);

    const float Jaw = Openness(LevelDb) * (0.75f * Open + 0.3f * Rounded + 0.3f * Spread + 0.4f * Other);
    Targets[JawOpen] = Jaw;
    // The lips meet once bilabials hold a quarter of the frame: in a room the
    // closure fills with the tail of the sound before it, and the network hedges.
    Targets[MouthClose] = std::min(Jaw, Weights[JawOpen]) * std::clamp(4.0f * Closed, 0.0f, 1.0f);
    SetPair(Targets, MouthPressLeft, MouthPressRight, 0.5f * Closed);
    // Rounding goes by its lead over the open and spread visemes, not by its share
    // alone: on a human voice an open or spread vowel often leaves a third of the
    // frame to rounded, which pursed the lips of "father" and "see".
    const float RoundedLead = Rounded - std::max(Open, Spread);
    Targets[MouthFunnel] = 0.55f * Dominant(RoundedLead);
    Targets[MouthPucker] = 0.65f * Dominant(RoundedLead);
    SetPair(Targets, MouthStretchLeft, MouthStretchRight, 0.4f * Spread);
    SetPair(Targets, MouthSmileLeft, MouthSmileRight, 0.25f * Spread);
    SetPair(Targets, MouthLowerDownLeft, MouthLowerDownRight, 0.4f * Jaw * (1.0f - Rounded));
    SetPair(Targets, MouthUpperUpLeft, MouthUpperUpRight, 0.2f * Jaw * (1.0f - Rounded));

    Weights[JawOpen] = Approach(Weights[JawOpen], Targets[JawOpen], JawRate);
    // Lips cannot close further than the jaw lets them.
    Weights[MouthClose] =
        std::min(Approach(Weights[MouthClose], Targets[MouthClose], LipCloseRate), Weights[JawOpen]);
    for (std::size_t Shape : {MouthPressLeft, MouthPressRight})
    {
        Weights[Shape] = Approach(Weights[Shape], Targets[Shape], LipCloseRate);
    }
    for (std::size_t Shape :
         {MouthFunnel, MouthPucker, MouthStretchLeft, MouthStretchRight, MouthSmileLeft, MouthSmileRight,
          MouthLowerDownLeft, MouthLowerDownRight, MouthUpperUpLeft, MouthUpperUpRight})
    {
        Weights[Shape] = Approach(Weights[Shape], Targets[Shape], ShapeRate);
    }
}

} // namespace LipsyncEngine
