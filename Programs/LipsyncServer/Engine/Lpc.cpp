#include "Lpc.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace LipsyncEngine
{
namespace
{
constexpr float ContourRadius = 0.985f;

struct FTrigTable
{
    std::array<std::array<float, LpcOrder + 1>, EnvelopeBins> Cos{};
    std::array<std::array<float, LpcOrder + 1>, EnvelopeBins> Sin{};

    FTrigTable()
    {
        for (int Bin = 0; Bin < EnvelopeBins; ++Bin)
        {
            const double Omega = std::numbers::pi * (Bin + 0.5) / EnvelopeBins;
            for (int K = 0; K <= LpcOrder; ++K)
            {
                Cos[Bin][K] = static_cast<float>(std::cos(Omega * K));
                Sin[Bin][K] = static_cast<float>(std::sin(Omega * K));
            }
        }
    }
};

const FTrigTable& Trig()
{
    static const FTrigTable Table;
    return Table;
}

// The peak of a parabola through three neighbouring bins, in bins from the middle one.
float RefinePeak(float Left, float Middle, float Right)
{
    const float Curvature = Left - 2.0f * Middle + Right;
    return Curvature < 0.0f ? 0.5f * (Left - Right) / Curvature : 0.0f;
}

float BinHz(int Bin, float Offset)
{
    return (static_cast<float>(Bin) + 0.5f + Offset) * EnvelopeBinHz;
}
} // namespace

std::array<double, LpcOrder + 1> Autocorrelate(std::span<const float> Frame)
{
    std::array<double, LpcOrder + 1> R{};
    const std::size_t Size = Frame.size();
    for (int Lag = 0; Lag <= LpcOrder; ++Lag)
    {
        float Sum = 0.0f;
        for (std::size_t Index = static_cast<std::size_t>(Lag); Index < Size; ++Index)
        {
            Sum += Frame[Index] * Frame[Index - Lag];
        }
        R[Lag] = Sum;
    }
    return R;
}

bool SolveLpc(const std::array<double, LpcOrder + 1>& R, FLpcCoefficients& A)
{
    A.fill(0.0f);
    A[0] = 1.0f;
    if (!(R[0] > 1e-9))
    {
        return false;
    }
    std::array<double, LpcOrder + 1> Current{1.0};
    std::array<double, LpcOrder + 1> Previous{};
    // A little white noise (lag-0 lift) keeps the recursion well conditioned.
    double Error = R[0] * 1.0001;
    for (int Order = 1; Order <= LpcOrder; ++Order)
    {
        double Acc = R[Order];
        for (int K = 1; K < Order; ++K)
        {
            Acc += Current[K] * R[Order - K];
        }
        const double Reflection = -Acc / Error;
        if (!(std::abs(Reflection) < 1.0))
        {
            return false;
        }
        Previous = Current;
        for (int K = 1; K < Order; ++K)
        {
            Current[K] = Previous[K] + Reflection * Previous[Order - K];
        }
        Current[Order] = Reflection;
        Error *= 1.0 - Reflection * Reflection;
    }
    for (int K = 0; K <= LpcOrder; ++K)
    {
        A[K] = static_cast<float>(Current[K]);
    }
    return true;
}

void LpcEnvelope(const FLpcCoefficients& A, FEnvelope& OutDb)
{
    FLpcCoefficients Scaled;
    float Radius = 1.0f;
    for (int K = 0; K <= LpcOrder; ++K)
    {
        Scaled[K] = A[K] * Radius;
        Radius /= ContourRadius;
    }
    const FTrigTable& Table = Trig();
    for (int Bin = 0; Bin < EnvelopeBins; ++Bin)
    {
        float Real = 0.0f;
        float Imaginary = 0.0f;
        for (int K = 0; K <= LpcOrder; ++K)
        {
            Real += Scaled[K] * Table.Cos[Bin][K];
            Imaginary -= Scaled[K] * Table.Sin[Bin][K];
        }
        OutDb[Bin] = -10.0f * std::log10(Real * Real + Imaginary * Imaginary + 1e-12f);
    }
}

FFormants PickFormants(const FEnvelope& EnvelopeDb)
{
    std::array<float, 3> Found{};
    std::size_t Count = 0;
    constexpr std::array<float, 3> MinHz = {180.0f, 550.0f, 1500.0f};
    constexpr std::array<float, 3> MaxHz = {1200.0f, 3000.0f, 4000.0f};
    for (int Bin = 1; Bin + 1 < EnvelopeBins && Count < Found.size(); ++Bin)
    {
        const float Middle = EnvelopeDb[Bin];
        if (Middle < EnvelopeDb[Bin - 1] || Middle < EnvelopeDb[Bin + 1])
        {
            continue;
        }
        const float Hz = BinHz(Bin, RefinePeak(EnvelopeDb[Bin - 1], Middle, EnvelopeDb[Bin + 1]));
        if (Hz > MaxHz[Count])
        {
            break;
        }
        const float Floor = Count > 0 ? std::max(MinHz[Count], Found[Count - 1] + 150.0f) : MinHz[Count];
        if (Hz >= Floor)
        {
            Found[Count++] = Hz;
        }
    }
    return {Found[0], Found[1], Found[2]};
}

} // namespace LipsyncEngine
