#include "SpeakerNormaliser.h"

#include <algorithm>
#include <cmath>

namespace LipsyncEngine
{
namespace
{
// The priors count as this many vowel frames, so the first vowels move them fast
// and later ones settle into a window of about AdaptFrames.
constexpr float PriorFrames = 30.0f;
constexpr float AdaptFrames = 400.0f;

constexpr float PeakReleaseDbPerFrame = 0.02f;
constexpr float FloorRiseDbPerFrame = 0.01f;

float Rate(float Frames)
{
    return 1.0f / std::min(PriorFrames + Frames, AdaptFrames);
}
} // namespace

void FSpeakerNormaliser::FRunning::Update(float Value, float Step)
{
    const float Delta = Value - Mean;
    Mean += Step * Delta;
    Variance += Step * (Delta * Delta - Variance);
}

float FSpeakerNormaliser::FRunning::Z(float Value) const
{
    return (Value - Mean) / std::sqrt(std::max(Variance, 1e-4f));
}

void FSpeakerNormaliser::TrackLevel(float EnergyDb)
{
    // The floor follows quiet frames down at once and creeps up otherwise, so it
    // finds the room noise between words.
    Floor = EnergyDb < Floor ? EnergyDb : Floor + FloorRiseDbPerFrame;
    Floor = std::max(Floor, -100.0f);
    if (EnergyDb > Floor + 15.0f)
    {
        Peak = EnergyDb > Peak ? Peak + 0.3f * (EnergyDb - Peak) : Peak - PeakReleaseDbPerFrame;
    }
    Peak = std::max(Peak, Floor + 20.0f);
}

bool FSpeakerNormaliser::IsVowelLike(const FSpeechFeatures& Features) const
{
    return Features.EnergyDb > Peak - 10.0f && Features.Tilt > 0.6f && Features.ZeroCrossingRate < 0.2f &&
           Features.Formants.F1 > 0.0f && Features.Formants.F2 > 0.0f && Features.Formants.F3 > 0.0f;
}

FNormalisedFeatures FSpeakerNormaliser::Normalise(const FSpeechFeatures& Features)
{
    TrackLevel(Features.EnergyDb);
    FNormalisedFeatures Out;
    Out.Level = Features.EnergyDb - Peak;
    Out.AboveFloor = Features.EnergyDb - Floor;
    Out.LowBandDb = Features.LowBandDb;
    Out.HighBandDb = Features.HighBandDb;
    Out.ZeroCrossingRate = Features.ZeroCrossingRate;
    Out.bVoiced = Features.Tilt > 0.5f && Features.ZeroCrossingRate < 0.25f && Out.AboveFloor > 10.0f;

    if (IsVowelLike(Features))
    {
        const float Step = Rate(VowelFrames);
        LogFormants[0].Update(std::log(Features.Formants.F1), Step);
        LogFormants[1].Update(std::log(Features.Formants.F2), Step);
        LogFormants[2].Update(std::log(Features.Formants.F3), Step);
        TiltStats.Update(Features.Tilt, Step);
        VowelFrames += 1.0f;
    }
    const std::array<float, 3> Hz = {Features.Formants.F1, Features.Formants.F2, Features.Formants.F3};
    std::array<float, 3> Z{};
    for (std::size_t Index = 0; Index < Z.size(); ++Index)
    {
        Z[Index] =
            Hz[Index] > 0.0f ? std::clamp(LogFormants[Index].Z(std::log(Hz[Index])), -4.0f, 4.0f) : 0.0f;
    }
    Out.Z1 = Z[0];
    Out.Z2 = Z[1];
    Out.Z3 = Z[2];
    Out.TiltZ = std::clamp(TiltStats.Z(Features.Tilt), -6.0f, 6.0f);

    const float OldZ2 = RecentZ2[Cursor % RecentZ2.size()];
    Out.F2Slope = Out.Z2 - OldZ2;
    RecentZ2[Cursor % RecentZ2.size()] = Out.Z2;
    RecentEnergy[Cursor % RecentEnergy.size()] = Features.EnergyDb;
    Out.Dip = *std::max_element(RecentEnergy.begin(), RecentEnergy.end()) - Features.EnergyDb;
    ++Cursor;
    return Out;
}

} // namespace LipsyncEngine
