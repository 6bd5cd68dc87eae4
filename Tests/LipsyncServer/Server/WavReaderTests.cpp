#include "ServerTestSupport.h"
#include "WavReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace
{
struct FAcceptedCase
{
    const char* Name;
    FWavSpec Spec;
};

const FAcceptedCase Accepted[] = {
    {"Pcm8", {.Bits = 8}},
    {"Pcm16", {}},
    {"Pcm24", {.Bits = 24}},
    {"Pcm32", {.Bits = 32}},
    {"Float32", {.Bits = 32, .bFloat = true}},
    {"Stereo44k", {.SampleRate = 44100, .Channels = 2}},
    {"ListChunkFirst", {.SampleRate = 22050, .bListFirst = true}},
};

class FAcceptedWavTest : public ::testing::TestWithParam<FAcceptedCase>
{
};
} // namespace

TEST_P(FAcceptedWavTest, ReadsMonoSamplesAtTheFileRate)
{
    const FWavSpec& Spec = GetParam().Spec;
    auto Read = ReadWav(MakeWav(Spec));
    ASSERT_TRUE(std::holds_alternative<FAudio>(Read)) << std::get<FRequestError>(Read).Message;
    const FAudio& Audio = std::get<FAudio>(Read);
    EXPECT_EQ(Audio.SampleRate, Spec.SampleRate);
    EXPECT_EQ(Audio.Samples.size(), std::size_t(Spec.Seconds * Spec.SampleRate));
    float Peak = 0.0f;
    for (const float Sample : Audio.Samples)
    {
        Peak = std::max(Peak, std::abs(Sample));
    }
    // The tone peaks at 0.6; 8 bits keep about two decimals.
    EXPECT_NEAR(Peak, 0.6f, 0.01f);
}

INSTANTIATE_TEST_SUITE_P(Wav, FAcceptedWavTest, ::testing::ValuesIn(Accepted),
                         [](const auto& Info) { return std::string(Info.param.Name); });

TEST(WavReader, RefusesEveryTruncationOfAValidFile)
{
    // Cutting a file anywhere leaves a RIFF or data size that claims too much.
    const std::string Wav = MakeWav({.Seconds = 0.01});
    for (std::size_t Size = 0; Size < Wav.size(); ++Size)
    {
        const auto Read = ReadWav(std::string_view(Wav).substr(0, Size));
        ASSERT_TRUE(std::holds_alternative<FRequestError>(Read)) << Size;
        EXPECT_EQ(std::get<FRequestError>(Read).Status, 415);
    }
}
