#include "VisemeNetwork.h"

#include "LaneProducts.h"

#include <algorithm>
#include <cmath>

namespace LipsyncEngine
{
namespace
{
#include "VisemeNetworkWeights.inc"

static_assert(NetworkFeatures == NumFrameFeatures && NetworkOutputs == NumVisemes,
              "VisemeNetworkWeights.inc was trained for other features; run tools/engine-training/train.py");
constexpr std::size_t NetworkInputs = NetworkFeatures * ContextFrames.size();
constexpr std::size_t HistoryFrames = *std::max_element(ContextFrames.begin(), ContextFrames.end()) + 1;

template <std::size_t Rows, std::size_t Columns>
void Layer(const std::array<float, Rows * Columns>& Weights, const std::array<float, Rows>& Bias,
           const float* In, float* Out, bool bRectify)
{
    MultiplyLanes(Weights.data(), Rows, Columns, In, Out);
    for (std::size_t Row = 0; Row < Rows; ++Row)
    {
        for (std::size_t Lane = 0; Lane < Lanes; ++Lane)
        {
            const float Value = Out[Row * Lanes + Lane] + Bias[Row];
            Out[Row * Lanes + Lane] = bRectify ? std::max(Value, 0.0f) : Value;
        }
    }
}

FVisemeWeights Softmax(const std::array<float, NumVisemes * Lanes>& Scores, std::size_t Lane)
{
    FVisemeWeights Shares{};
    float Largest = Scores[Lane];
    for (std::size_t Viseme = 1; Viseme < NumVisemes; ++Viseme)
    {
        Largest = std::max(Largest, Scores[Viseme * Lanes + Lane]);
    }
    float Sum = 0.0f;
    for (std::size_t Viseme = 0; Viseme < NumVisemes; ++Viseme)
    {
        Shares[Viseme] = std::exp(Scores[Viseme * Lanes + Lane] - Largest);
        Sum += Shares[Viseme];
    }
    for (float& Share : Shares)
    {
        Share /= Sum;
    }
    return Shares;
}
} // namespace

FVisemeNetwork::FVisemeNetwork() : History(HistoryFrames * NumFrameFeatures, 0.0f) {}

std::vector<FVisemeWeights> FVisemeNetwork::Classify(std::span<const FFrameFeatures> Frames)
{
    std::vector<FVisemeWeights> Shares(Frames.size());
    std::vector<float> Input(NetworkInputs * Lanes);
    std::vector<float> Hidden1(Hidden1Units * Lanes);
    std::vector<float> Hidden2(Hidden2Units * Lanes);
    std::array<float, NumVisemes * Lanes> Scores{};
    for (std::size_t First = 0; First < Frames.size(); First += Lanes)
    {
        const std::size_t Count = std::min(Lanes, Frames.size() - First);
        std::fill(Input.begin(), Input.end(), 0.0f);
        for (std::size_t Lane = 0; Lane < Count; ++Lane)
        {
            Remember(Frames[First + Lane]);
            for (std::size_t Slot = 0; Slot < ContextFrames.size(); ++Slot)
            {
                const float* Past =
                    History.data() + (HistoryFrames - 1 - ContextFrames[Slot]) * NumFrameFeatures;
                for (std::size_t Feature = 0; Feature < NumFrameFeatures; ++Feature)
                {
                    Input[(Slot * NumFrameFeatures + Feature) * Lanes + Lane] = Past[Feature];
                }
            }
        }
        Layer<Hidden1Units, NetworkInputs>(Layer1Weights, Layer1Bias, Input.data(), Hidden1.data(), true);
        Layer<Hidden2Units, Hidden1Units>(Layer2Weights, Layer2Bias, Hidden1.data(), Hidden2.data(), true);
        Layer<NumVisemes, Hidden2Units>(Layer3Weights, Layer3Bias, Hidden2.data(), Scores.data(), false);
        for (std::size_t Lane = 0; Lane < Count; ++Lane)
        {
            Shares[First + Lane] = Softmax(Scores, Lane);
        }
    }
    return Shares;
}

void FVisemeNetwork::Remember(const FFrameFeatures& Features)
{
    std::copy(History.begin() + NumFrameFeatures, History.end(), History.begin());
    std::copy(Features.begin(), Features.end(), History.end() - NumFrameFeatures);
}

} // namespace LipsyncEngine
