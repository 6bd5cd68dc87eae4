#include "SpeechFeatures.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace LipsyncEngine
{
namespace
{
constexpr float PreEmphasis = 0.95f;

float BandMeanDb(const FEnvelope& Envelope, float LowHz, float HighHz)
{
    const int First = std::clamp(static_cast<int>(LowHz / EnvelopeBinHz), 0, EnvelopeBins - 1);
    const int Last = std::clamp(static_cast<int>(HighHz / EnvelopeBinHz), First + 1, EnvelopeBins);
    float Sum = 0.0f;
    for (int Bin = First; Bin < Last; ++Bin)
    {
        Sum += Envelope[Bin];
    }
    return Sum / static_cast<float>(Last - First);
}
} // namespace

FFeatureExtractor::FFeatureExtractor()
{
    for (std::size_t Index = 0; Index < WindowSamples; ++Index)
    {
        Taper[Index] =
            static_cast<float>(0.54 - 0.46 * std::cos(2.0 * std::numbers::pi * Index / (WindowSamples - 1)));
    }
}

FSpeechFeatures FFeatureExtractor::Extract(std::span<const float> Window)
{
    FSpeechFeatures Features;
    if (Window.size() != WindowSamples)
    {
        return Features;
    }
    float Mean = 0.0f;
    for (float Sample : Window)
    {
        Mean += Sample;
    }
    Mean /= WindowSamples;

    float Power = 0.0f;
    float Lag1 = 0.0f;
    int Crossings = 0;
    float Previous = Window[0] - Mean;
    Work[0] = Previous * Taper[0];
    Power += Previous * Previous;
    for (std::size_t Index = 1; Index < WindowSamples; ++Index)
    {
        const float Sample = Window[Index] - Mean;
        Power += Sample * Sample;
        Lag1 += Sample * Previous;
        Crossings += (Sample >= 0.0f) != (Previous >= 0.0f) ? 1 : 0;
        Work[Index] = (Sample - PreEmphasis * Previous) * Taper[Index];
        Previous = Sample;
    }
    Features.EnergyDb = 10.0f * std::log10(Power / WindowSamples + 1e-12f);
    Features.ZeroCrossingRate = static_cast<float>(Crossings) / (WindowSamples - 1);
    Features.Tilt = Power > 1e-9f ? Lag1 / Power : 0.0f;

    FLpcCoefficients A;
    SolveLpc(Autocorrelate(Work), A);
    LpcEnvelope(A, Envelope);
    const float MidDb = BandMeanDb(Envelope, 400.0f, 3000.0f);
    Features.LowBandDb = BandMeanDb(Envelope, 0.0f, 400.0f) - MidDb;
    Features.HighBandDb = BandMeanDb(Envelope, 4000.0f, 8000.0f) - MidDb;
    Features.Formants = PickFormants(Envelope);
    return Features;
}

} // namespace LipsyncEngine
