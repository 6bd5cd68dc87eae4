#pragma once

#include <array>
#include <span>

namespace LipsyncEngine
{

// Linear prediction of a 16 kHz frame: an all-pole model of the vocal tract whose
// spectral peaks are the formants.
inline constexpr int LpcOrder = 16;
using FLpcCoefficients = std::array<float, LpcOrder + 1>;

// Autocorrelation at lags 0..LpcOrder.
std::array<double, LpcOrder + 1> Autocorrelate(std::span<const float> Frame);

// Levinson-Durbin recursion; A[0] is 1. False when the frame has no energy or the
// recursion turns unstable (the coefficients are then those of a flat spectrum).
bool SolveLpc(const std::array<double, LpcOrder + 1>& R, FLpcCoefficients& A);

// The model's power spectrum in dB at EnvelopeBins frequencies evenly spaced over
// 0..8 kHz, evaluated slightly inside the unit circle so that formants close to
// each other (F1 and F2 of a back vowel) stay separate peaks.
inline constexpr int EnvelopeBins = 128;
inline constexpr float EnvelopeBinHz = 8000.0f / EnvelopeBins;
using FEnvelope = std::array<float, EnvelopeBins>;
void LpcEnvelope(const FLpcCoefficients& A, FEnvelope& OutDb);

struct FFormants
{
    float F1 = 0.0f;
    float F2 = 0.0f;
    float F3 = 0.0f;
};

// The first three peaks of the envelope in the ranges where formants of adult and
// child speech fall; a missing peak leaves 0.
FFormants PickFormants(const FEnvelope& EnvelopeDb);

} // namespace LipsyncEngine
