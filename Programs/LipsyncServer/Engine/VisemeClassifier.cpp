#include "VisemeClassifier.h"

#include <algorithm>
#include <cmath>

namespace LipsyncEngine
{
namespace
{
// Fitted by multinomial logistic regression, classes balanced, on espeak-ng speech
// of the tuning sentences in five voices (Benchmarks/Engine/fit_visemes.py); one row
// per input, one column per viseme.
constexpr std::array<FVisemeWeights, NumClassifierInputs> Weights = {{
#include "VisemeWeights.inc"
}};

// Below this the frame is room noise whatever its spectrum looks like.
constexpr float SilentAboveFloorDb = 6.0f;
} // namespace

std::array<float, NumClassifierInputs> ClassifierInputs(const FNormalisedFeatures& F)
{
    const float Level = std::clamp(F.Level, -60.0f, 10.0f) / 10.0f;
    const float AboveFloor = std::clamp(F.AboveFloor, -10.0f, 60.0f) / 20.0f;
    const float Tilt = F.TiltZ / 2.0f;
    return {1.0f,
            Level,
            AboveFloor,
            F.Z1,
            F.Z2,
            F.Z3,
            Tilt,
            F.F2Slope,
            std::clamp(F.Dip, 0.0f, 40.0f) / 10.0f,
            F.LowBandDb / 10.0f,
            F.HighBandDb / 10.0f,
            F.ZeroCrossingRate * 10.0f,
            F.bVoiced ? 1.0f : 0.0f,
            F.Z1 * F.Z1,
            F.Z2 * F.Z2,
            F.Z3 * F.Z3,
            F.Z1 * F.Z2,
            F.Z2 * F.Z3,
            Tilt * Tilt};
}

FVisemeWeights ClassifyViseme(const FNormalisedFeatures& Features)
{
    FVisemeWeights Shares{};
    if (!(Features.AboveFloor > SilentAboveFloorDb))
    {
        Shares[static_cast<std::size_t>(EViseme::Silence)] = 1.0f;
        return Shares;
    }
    const auto Inputs = ClassifierInputs(Features);
    for (std::size_t Input = 0; Input < NumClassifierInputs; ++Input)
    {
        for (std::size_t Viseme = 0; Viseme < NumVisemes; ++Viseme)
        {
            Shares[Viseme] += Inputs[Input] * Weights[Input][Viseme];
        }
    }
    const float Largest = *std::max_element(Shares.begin(), Shares.end());
    float Sum = 0.0f;
    for (float& Share : Shares)
    {
        Share = std::exp(Share - Largest);
        Sum += Share;
    }
    for (float& Share : Shares)
    {
        Share /= Sum;
    }
    return Shares;
}

} // namespace LipsyncEngine
