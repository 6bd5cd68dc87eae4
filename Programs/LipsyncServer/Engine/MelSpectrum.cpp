#include "MelSpectrum.h"

#include <unsupported/Eigen/FFT>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace LipsyncEngine
{
namespace
{
constexpr std::size_t FftSize = 512;
constexpr float LowestHz = 80.0f;
constexpr float HighestHz = 7600.0f;
// Digital silence has no power at all; this floor (about 120 dB below a full-scale
// tone) keeps its logarithm finite and equal in every band, so exact zeros look
// like a very quiet room rather than an endless drop.
constexpr float PowerFloor = 1e-8f;

float HzToMel(float Hz)
{
    return 2595.0f * std::log10(1.0f + Hz / 700.0f);
}

float MelToHz(float Mel)
{
    return 700.0f * (std::pow(10.0f, Mel / 2595.0f) - 1.0f);
}
} // namespace

struct FMelAnalyser::FTransform
{
    Eigen::FFT<float> Fft;
};

FMelAnalyser::FMelAnalyser()
    : Transform(std::make_unique<FTransform>()), Work(FftSize, 0.0f), Spectrum(FftSize / 2 + 1),
      Power(FftSize / 2 + 1)
{
    Transform->Fft.SetFlag(Eigen::FFT<float>::HalfSpectrum);
    for (std::size_t Index = 0; Index < WindowSamples; ++Index)
    {
        Taper[Index] =
            static_cast<float>(0.54 - 0.46 * std::cos(2.0 * std::numbers::pi * Index / (WindowSamples - 1)));
    }
    const float BinHz = static_cast<float>(AnalysisRate) / FftSize;
    const float LowMel = HzToMel(LowestHz);
    const float StepMel = (HzToMel(HighestHz) - LowMel) / (NumMelBands + 1);
    for (std::size_t Band = 0; Band < NumMelBands; ++Band)
    {
        const float Left = MelToHz(LowMel + StepMel * Band);
        const float Centre = MelToHz(LowMel + StepMel * (Band + 1));
        const float Right = MelToHz(LowMel + StepMel * (Band + 2));
        Bands[Band].FirstBin = static_cast<std::size_t>(std::ceil(Left / BinHz));
        for (std::size_t Bin = Bands[Band].FirstBin; Bin * BinHz < Right && Bin <= FftSize / 2; ++Bin)
        {
            const float Hz = Bin * BinHz;
            Bands[Band].Weights.push_back(Hz < Centre ? (Hz - Left) / (Centre - Left)
                                                      : (Right - Hz) / (Right - Centre));
        }
    }
}

FMelAnalyser::~FMelAnalyser() = default;

FMelFrame FMelAnalyser::Analyse(std::span<const float> Window)
{
    FMelFrame Frame;
    if (Window.size() != WindowSamples)
    {
        return Frame;
    }
    // The window's own mean goes first, so that a DC offset adds no low-band power.
    float Mean = 0.0f;
    for (float Sample : Window)
    {
        Mean += Sample;
    }
    Mean /= WindowSamples;
    for (std::size_t Index = 0; Index < WindowSamples; ++Index)
    {
        Work[Index] = (Window[Index] - Mean) * Taper[Index];
    }
    Transform->Fft.fwd(Spectrum.data(), Work.data(), static_cast<int>(FftSize));
    for (std::size_t Bin = 0; Bin < Power.size(); ++Bin)
    {
        Power[Bin] = std::norm(Spectrum[Bin]);
    }
    float Total = 0.0f;
    for (std::size_t Band = 0; Band < NumMelBands; ++Band)
    {
        float Sum = 0.0f;
        const FBand& B = Bands[Band];
        for (std::size_t Index = 0; Index < B.Weights.size(); ++Index)
        {
            Sum += B.Weights[Index] * Power[B.FirstBin + Index];
        }
        Total += Sum;
        Frame.BandsDb[Band] = 10.0f * std::log10(Sum + PowerFloor);
    }
    Frame.EnergyDb = 10.0f * std::log10(Total + PowerFloor);
    return Frame;
}

} // namespace LipsyncEngine
