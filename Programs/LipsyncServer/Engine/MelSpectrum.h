#pragma once

#include "Resampler.h"

#include <array>
#include <complex>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace LipsyncEngine
{

// Analysis frames: 25 ms windows every 10 ms of 16 kHz speech.
inline constexpr std::size_t HopSamples = AnalysisRate / 100;
inline constexpr std::size_t WindowSamples = AnalysisRate / 40;
inline constexpr std::size_t NumMelBands = 32;

// One frame's power in mel bands from 80 to 7,600 Hz, in dB.
struct FMelFrame
{
    std::array<float, NumMelBands> BandsDb{};
    float EnergyDb = 0.0f;
};

// Power spectrum of a Hamming-tapered window, pooled into triangular mel bands.
class FMelAnalyser
{
public:
    FMelAnalyser();
    ~FMelAnalyser();
    FMelAnalyser(const FMelAnalyser&) = delete;
    FMelAnalyser& operator=(const FMelAnalyser&) = delete;

    // Window holds WindowSamples samples.
    FMelFrame Analyse(std::span<const float> Window);

private:
    struct FBand
    {
        std::size_t FirstBin = 0;
        std::vector<float> Weights;
    };
    struct FTransform;

    std::array<float, WindowSamples> Taper{};
    std::array<FBand, NumMelBands> Bands{};
    std::unique_ptr<FTransform> Transform;
    std::vector<float> Work;
    std::vector<std::complex<float>> Spectrum;
    std::vector<float> Power;
};

} // namespace LipsyncEngine
