#include "VisemeNetwork.h"

#include <Eigen/Core>

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

using FMatrix = Eigen::Matrix<float, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using FConstMatrix = Eigen::Map<const FMatrix>;
using FVector = Eigen::Map<Eigen::VectorXf>;
using FConstVector = Eigen::Map<const Eigen::VectorXf>;

template <std::size_t Rows, std::size_t Columns>
void Layer(const std::array<float, Rows * Columns>& Weights, const std::array<float, Rows>& Bias,
           const float* In, float* Out, bool bRectify)
{
    FVector Result(Out, Rows);
    Result.noalias() = FConstMatrix(Weights.data(), Rows, Columns) * FConstVector(In, Columns);
    Result += FConstVector(Bias.data(), Rows);
    if (bRectify)
    {
        Result = Result.cwiseMax(0.0f);
    }
}
} // namespace

FVisemeNetwork::FVisemeNetwork()
    : History(HistoryFrames * NumFrameFeatures, 0.0f), Input(NetworkInputs), Hidden1(Hidden1Units),
      Hidden2(Hidden2Units)
{
}

FVisemeWeights FVisemeNetwork::Classify(const FFrameFeatures& Features)
{
    std::copy(History.begin() + NumFrameFeatures, History.end(), History.begin());
    std::copy(Features.begin(), Features.end(), History.end() - NumFrameFeatures);
    for (std::size_t Slot = 0; Slot < ContextFrames.size(); ++Slot)
    {
        const std::size_t Frame = HistoryFrames - 1 - ContextFrames[Slot];
        std::copy_n(History.begin() + Frame * NumFrameFeatures, NumFrameFeatures,
                    Input.begin() + Slot * NumFrameFeatures);
    }
    std::array<float, NumVisemes> Scores{};
    Layer<Hidden1Units, NetworkInputs>(Layer1Weights, Layer1Bias, Input.data(), Hidden1.data(), true);
    Layer<Hidden2Units, Hidden1Units>(Layer2Weights, Layer2Bias, Hidden1.data(), Hidden2.data(), true);
    Layer<NumVisemes, Hidden2Units>(Layer3Weights, Layer3Bias, Hidden2.data(), Scores.data(), false);

    FVisemeWeights Shares{};
    const float Largest = *std::max_element(Scores.begin(), Scores.end());
    float Sum = 0.0f;
    for (std::size_t Viseme = 0; Viseme < NumVisemes; ++Viseme)
    {
        Shares[Viseme] = std::exp(Scores[Viseme] - Largest);
        Sum += Shares[Viseme];
    }
    for (float& Share : Shares)
    {
        Share /= Sum;
    }
    return Shares;
}

} // namespace LipsyncEngine
