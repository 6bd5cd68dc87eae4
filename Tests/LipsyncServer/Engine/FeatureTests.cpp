#include "FeatureNormaliser.h"
#include "LaneProducts.h"
#include "MelSpectrum.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

namespace
{
using namespace LipsyncEngine;

// Half a second of a vowel-like buzz (harmonics of 130 Hz falling off with
// frequency) after a second of silence, at the given gain and DC offset, with
// faint noise so that the silence has a floor.
std::vector<float> BuzzAfterSilence(float Gain, float Offset, float NoiseLevel)
{
    std::vector<float> Samples(static_cast<std::size_t>(1.5 * AnalysisRate));
    unsigned Seed = 12345;
    for (std::size_t Index = 0; Index < Samples.size(); ++Index)
    {
        Seed = Seed * 1103515245u + 12345u;
        const float Noise = NoiseLevel * (static_cast<float>(Seed >> 8) / (1u << 24) - 0.5f);
        const double Time = static_cast<double>(Index) / AnalysisRate;
        double Buzz = 0.0;
        for (int Harmonic = 1; Harmonic * 130 < 7000 && Time >= 1.0; ++Harmonic)
        {
            Buzz += std::sin(2.0 * std::numbers::pi * 130.0 * Harmonic * Time) / Harmonic;
        }
        Samples[Index] = Gain * (0.3f * static_cast<float>(Buzz) + Noise) + Offset;
    }
    return Samples;
}

std::vector<FFrameFeatures> Features(const std::vector<float>& Samples)
{
    FMelAnalyser Analyser;
    FFeatureNormaliser Normaliser;
    std::vector<FFrameFeatures> Frames;
    for (std::size_t Start = 0; Start + WindowSamples <= Samples.size(); Start += HopSamples)
    {
        Frames.push_back(Normaliser.Normalise(
            Analyser.Analyse(std::span<const float>(Samples).subspan(Start, WindowSamples))));
    }
    return Frames;
}

// A quiet take, an offset microphone and a quiet take with offset are the same
// recording to the network: its features may not follow level or DC.
TEST(FrameFeatures, IgnoreLevelAndOffset)
{
    const auto Reference = Features(BuzzAfterSilence(1.0f, 0.0f, 1e-2f));
    struct FCase
    {
        const char* Name;
        float Gain;
        float Offset;
    };
    for (const FCase& Case : {FCase{"-24 dB", 0.063f, 0.0f}, FCase{"-30 dB", 0.0316f, 0.0f},
                              FCase{"DC offset", 1.0f, 0.05f}, FCase{"-24 dB with offset", 0.063f, -0.02f}})
    {
        const auto Changed = Features(BuzzAfterSilence(Case.Gain, Case.Offset, 1e-2f));
        ASSERT_EQ(Changed.size(), Reference.size());
        for (std::size_t Frame = 0; Frame < Reference.size(); ++Frame)
        {
            for (std::size_t Feature = 0; Feature < NumFrameFeatures; ++Feature)
            {
                ASSERT_NEAR(Changed[Frame][Feature], Reference[Frame][Feature], 0.05f)
                    << Case.Name << ", frame " << Frame << ", feature " << Feature;
            }
        }
    }
}

// Digital silence before speech must not push the speech to the edge of the
// level range: the buzz stands as far above the floor as it does over faint noise.
TEST(FrameFeatures, DigitalSilenceIsAFloorNotAnAbyss)
{
    const auto Silent = Features(BuzzAfterSilence(1.0f, 0.0f, 0.0f));
    for (const FFrameFeatures& Frame : Silent)
    {
        for (float Value : Frame)
        {
            ASSERT_TRUE(std::isfinite(Value));
        }
    }
    const FFrameFeatures& Speech = Silent.back();
    EXPECT_NEAR(Speech[LevelFeature], 0.0f, 0.05f);
    EXPECT_GT(Speech[AboveFloorFeature], 1.0f);
}

} // namespace

// The network's products must be, lane by lane, exactly a column-order sum, for any
// row count (whole blocks of rows and the rows left over), on whichever build of the
// product this processor runs.
TEST(LaneProducts, EveryLaneIsItsColumnOrderSum)
{
    unsigned Seed = 7;
    const auto Next = [&Seed]
    {
        Seed = Seed * 1103515245u + 12345u;
        return static_cast<float>(Seed >> 8) / (1u << 24) - 0.5f;
    };
    constexpr std::size_t Columns = 37;
    for (std::size_t Rows : {1u, 3u, 4u, 6u, 9u})
    {
        std::vector<float> Weights(Rows * Columns);
        std::vector<float> In(Columns * Lanes);
        for (float& Value : Weights)
        {
            Value = Next();
        }
        for (float& Value : In)
        {
            Value = Next() * 1000.0f;
        }
        std::vector<float> Sums(Rows * Lanes, -1.0f);
        MultiplyLanes(Weights.data(), Rows, Columns, In.data(), Sums.data());
        for (std::size_t Row = 0; Row < Rows; ++Row)
        {
            for (std::size_t Lane = 0; Lane < Lanes; ++Lane)
            {
                volatile float Expected = 0.0f;
                for (std::size_t Column = 0; Column < Columns; ++Column)
                {
                    const volatile float Product =
                        Weights[Row * Columns + Column] * In[Column * Lanes + Lane];
                    Expected = Expected + Product;
                }
                EXPECT_EQ(Sums[Row * Lanes + Lane], Expected)
                    << Rows << " rows, row " << Row << ", lane " << Lane;
            }
        }
    }
}
