#include "FaceEngine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

namespace
{
using namespace LipsyncEngine;

std::size_t Shape(std::string_view Name)
{
    const auto& Names = BlendShapeNames();
    return static_cast<std::size_t>(std::find(Names.begin(), Names.end(), Name) - Names.begin());
}

// Voiced syllables four times a second: harmonics of 120 Hz shaped by two formant
// peaks, with pauses between them.
std::vector<float> Syllables(int SampleRate, double Seconds, double F1 = 700.0, double F2 = 1200.0)
{
    std::vector<float> Samples(static_cast<std::size_t>(Seconds * SampleRate));
    for (std::size_t Index = 0; Index < Samples.size(); ++Index)
    {
        const double Time = static_cast<double>(Index) / SampleRate;
        const double Envelope = std::max(0.0, std::sin(2.0 * std::numbers::pi * 4.0 * Time));
        double Sum = 0.0;
        for (int Harmonic = 1; Harmonic * 120.0 < std::min(4000.0, SampleRate / 2.0); ++Harmonic)
        {
            const double Hz = Harmonic * 120.0;
            const double Gain =
                1.0 / (1.0 + std::pow((Hz - F1) / 150.0, 2)) + 0.5 / (1.0 + std::pow((Hz - F2) / 200.0, 2));
            Sum += Gain * std::sin(2.0 * std::numbers::pi * Hz * Time);
        }
        Samples[Index] = static_cast<float>(0.2 * Envelope * Sum);
    }
    return Samples;
}

std::vector<FFaceFrame> AnimateInChunks(FFaceEngine& Engine, std::span<const float> Samples, int SampleRate)
{
    std::vector<FFaceFrame> Frames;
    std::size_t Chunk = 1;
    for (std::size_t Start = 0; Start < Samples.size();)
    {
        const std::size_t Count = std::min(Chunk, Samples.size() - Start);
        const auto Part = Engine.Animate(Samples.subspan(Start, Count), SampleRate);
        Frames.insert(Frames.end(), Part.begin(), Part.end());
        Start += Count;
        Chunk = Chunk * 7 % 4099 + 13; // odd sizes from 1 sample to a quarter second
    }
    return Frames;
}

void ExpectSameFrames(const std::vector<FFaceFrame>& A, const std::vector<FFaceFrame>& B)
{
    ASSERT_EQ(A.size(), B.size());
    for (std::size_t Index = 0; Index < A.size(); ++Index)
    {
        ASSERT_EQ(A[Index].Weights, B[Index].Weights) << "frame " << Index;
        ASSERT_EQ(A[Index].Bones, B[Index].Bones) << "frame " << Index;
    }
}

bool AllFinite(const std::vector<FFaceFrame>& Frames)
{
    return std::all_of(
        Frames.begin(), Frames.end(),
        [](const FFaceFrame& Frame)
        {
            const bool bWeights =
                std::all_of(Frame.Weights.begin(), Frame.Weights.end(),
                            [](float W) { return std::isfinite(W) && W >= 0.0f && W <= 1.0f; });
            return bWeights && std::all_of(Frame.Bones.begin(), Frame.Bones.end(),
                                           [](const auto& Bone) {
                                               return std::all_of(Bone.begin(), Bone.end(),
                                                                  [](float V) { return std::isfinite(V); });
                                           });
        });
}

FAnimationOptions Moving(EEmotion Emotion = EEmotion::Calm)
{
    FAnimationOptions Options;
    Options.Emotion = Emotion;
    Options.bEyeMovement = true;
    Options.bNeckMovement = true;
    return Options;
}

// Chunks continue exactly where the previous one stopped: the frames are equal
// bit for bit, not merely close, and as many as the audio lasts, at every common rate.
TEST(FaceEngine, ChunkedEqualsWholeAndIsDeterministic)
{
    for (int Rate : {8000, 11025, 12000, 16000, 22050, 44100, 48000})
    {
        SCOPED_TRACE(Rate);
        const auto Audio = Syllables(Rate, 3.3);
        FFaceEngine Whole(Moving());
        FFaceEngine Again(Moving());
        FFaceEngine Chunked(Moving());
        const auto Frames = Whole.Animate(Audio, Rate);
        EXPECT_EQ(Frames.size(), Audio.size() * 60 / std::size_t(Rate));
        ExpectSameFrames(Frames, Again.Animate(Audio, Rate));
        ExpectSameFrames(Frames, AnimateInChunks(Chunked, Audio, Rate));
    }
}

TEST(FaceEngine, SpeechMovesTheMouthAndSilenceReturnsToNeutral)
{
    FFaceEngine Engine(FAnimationOptions{});
    auto Audio = Syllables(16000, 2.0);
    Audio.resize(Audio.size() + 16000, 0.0f);
    const auto Frames = Engine.Animate(Audio, 16000);
    ASSERT_EQ(Frames.size(), 180u);
    const float MostOpen =
        std::max_element(Frames.begin(), Frames.begin() + 120,
                         [](const auto& A, const auto& B)
                         { return A.Weights[Shape("jawOpen")] < B.Weights[Shape("jawOpen")]; })
            ->Weights[Shape("jawOpen")];
    EXPECT_GT(MostOpen, 0.3f);
    const FFaceFrame& Last = Frames.back();
    for (std::size_t Index = 0; Index < NumBlendShapes; ++Index)
    {
        if (Index != Shape("eyeBlinkLeft") && Index != Shape("eyeBlinkRight"))
        {
            EXPECT_LT(Last.Weights[Index], 0.01f) << BlendShapeNames()[Index];
        }
    }
    for (const auto& Bone : Last.Bones)
    {
        EXPECT_EQ(Bone, (std::array<float, 3>{}));
    }
}

TEST(FaceEngine, EmotionShapesTheMouthCorners)
{
    const auto Audio = Syllables(16000, 2.0);
    FFaceEngine Happy(Moving(EEmotion::Happy));
    FFaceEngine Sorrow(Moving(EEmotion::Sorrow));
    const auto HappyFrames = Happy.Animate(Audio, 16000);
    const auto SorrowFrames = Sorrow.Animate(Audio, 16000);
    const auto Smile = [](const std::vector<FFaceFrame>& Frames)
    {
        float Sum = 0.0f;
        for (const FFaceFrame& Frame : Frames)
        {
            Sum += Frame.Weights[Shape("mouthSmileLeft")] + Frame.Weights[Shape("mouthSmileRight")];
        }
        return Sum / static_cast<float>(Frames.size());
    };
    EXPECT_GT(Smile(HappyFrames), Smile(SorrowFrames) + 0.3f);
}

// That bones stay still when off is the server's cloud answer test.
TEST(FaceEngine, EyesAndNeckMoveEveryFewSecondsWhenOn)
{
    FFaceEngine Alive(Moving());
    const auto Frames = Alive.Animate(Syllables(16000, 9.0), 16000);
    const int Fps = FAnimationOptions{}.Fps;
    for (std::size_t Start = 0; Start + 3 * Fps <= Frames.size(); Start += Fps / 2)
    {
        const auto Moves = [&](std::size_t Bone)
        {
            return std::any_of(Frames.begin() + Start, Frames.begin() + Start + 3 * Fps,
                               [&](const FFaceFrame& F)
                               { return std::abs(F.Bones[Bone][1] - Frames[Start].Bones[Bone][1]) > 0.5f; });
        };
        EXPECT_TRUE(Moves(0)) << "left eye still from frame " << Start;
        EXPECT_TRUE(Moves(2)) << "neck still from frame " << Start;
    }
}

TEST(FaceEngine, HostileInputNeverCrashesNorGivesNaN)
{
    FFaceEngine Engine(Moving());
    EXPECT_TRUE(Engine.Animate({}, 16000).empty());
    EXPECT_TRUE(Engine.Animate(std::vector<float>(100, 0.5f), 0).empty());
    EXPECT_TRUE(Engine.Animate(std::vector<float>(100, 0.5f), -44100).empty());

    std::vector<float> Bad = Syllables(44100, 1.0);
    for (std::size_t Index = 0; Index < Bad.size(); Index += 97)
    {
        Bad[Index] =
            Index % 2 ? std::numeric_limits<float>::quiet_NaN() : std::numeric_limits<float>::infinity();
    }
    for (float& Sample : std::span(Bad).subspan(20000, 5000))
    {
        Sample *= 1e30f;
    }
    const auto Frames = Engine.Animate(Bad, 44100);
    EXPECT_EQ(Frames.size(), 60u);
    EXPECT_TRUE(AllFinite(Frames));

    const auto Slow = Engine.Animate(std::vector<float>(3, 0.9f), 1);
    EXPECT_EQ(Slow.size(), 180u);
    EXPECT_TRUE(AllFinite(Slow));
    EXPECT_TRUE(AllFinite(Engine.Animate(std::vector<float>(1000, 1.0f), std::numeric_limits<int>::max())));
}

} // namespace
