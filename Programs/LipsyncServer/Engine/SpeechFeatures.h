#pragma once

#include "Lpc.h"
#include "Resampler.h"

#include <array>
#include <cstddef>
#include <span>

namespace LipsyncEngine
{

// Analysis frames: 25 ms windows every 10 ms of 16 kHz speech.
inline constexpr std::size_t HopSamples = AnalysisRate / 100;
inline constexpr std::size_t WindowSamples = AnalysisRate / 40;
inline constexpr float HopSeconds = static_cast<float>(HopSamples) / AnalysisRate;

// What one analysis frame measures.
struct FSpeechFeatures
{
    // Mean power in dB relative to a full-scale square wave.
    float EnergyDb = -120.0f;
    // Sign changes per sample: high for fricatives, low for voiced sounds.
    float ZeroCrossingRate = 0.0f;
    // Normalised autocorrelation at lag one: near 1 for a steep (voiced, nasal, back
    // rounded) spectrum, low or negative for hiss.
    float Tilt = 0.0f;
    // The envelope's level below 400 Hz and above 4 kHz against 0.4-3 kHz, in dB:
    // nasal murmur is strong at the bottom, sibilants at the top.
    float LowBandDb = 0.0f;
    float HighBandDb = 0.0f;
    FFormants Formants;
};

class FFeatureExtractor
{
public:
    FFeatureExtractor();

    // Window holds WindowSamples samples.
    FSpeechFeatures Extract(std::span<const float> Window);

private:
    std::array<float, WindowSamples> Taper{};
    std::array<float, WindowSamples> Work{};
    FEnvelope Envelope{};
};

} // namespace LipsyncEngine
