#include "AnimationSvg.h"
#include "PlotColumns.h"
#include "TextCount.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace
{
FCadrelZELResponse Animation(const TArray<FString>& Names, int32 Frames, int32 Fps)
{
    FCadrelZELResponse Made;
    Made.FPS = Fps;
    Made.BlendShapesNames = Names;
    for (int32 Index = 0; Index < Frames; ++Index)
    {
        FCadrelFaceFrames Frame;
        for (int32 Column = 0; Column < Names.Num(); ++Column)
        {
            Frame.Blendshapes.Add(0.5 + 0.5 * std::sin(Index * 0.3 + Column));
        }
        Made.Frames.Add(Frame);
    }
    return Made;
}
} // namespace

TEST(AnimationSvg, DrawsAndListsOnlyTheCurvesTheAnimationNames)
{
    const std::vector<float> Mono(16000, 0.25f);
    const std::string Svg =
        AnimationToSvg(Animation({TEXT("eyeBlinkLeft"), TEXT("jawOpen"), TEXT("mouthSmileRight")}, 60, 60),
                       Mono, 16000, "<fox> & \"friends\"");

    EXPECT_TRUE(Svg.starts_with("<?xml")) << Svg.substr(0, 80);
    EXPECT_EQ(CountOf(Svg, "<path stroke="), 2);
    EXPECT_EQ(CountOf(Svg, ">jawOpen</text>"), 1);
    EXPECT_EQ(CountOf(Svg, ">smile</text>"), 1);
    for (const char* Absent : {"mouthClose", "mouthFunnel", "mouthPucker", "stretch", "eyeBlink"})
    {
        EXPECT_EQ(Svg.find(Absent), std::string::npos) << Absent;
    }
    EXPECT_EQ(CountOf(Svg, "&lt;fox&gt; &amp; &quot;friends&quot;"), 2);
    EXPECT_EQ(Svg.find("<fox>"), std::string::npos);
    EXPECT_EQ(CountOf(Svg, ">audio</text>"), 1);
}

// Well-formedness (tags that nest and close, quoted attributes, entities) and wild
// numbers, on hostile records and on ordinary and empty ones, are AnimationWritersFuzzer's.
TEST(AnimationSvg, AxesFollowWhatTheRecordAndTheAudioCanGive)
{
    const FCadrelZELResponse NoRate = Animation({TEXT("jawOpen")}, 5, 0);
    const std::vector<float> Noise = {0.5f, -0.5f};
    for (const int Rate : {0, -8000, 8000})
    {
        const std::string Svg = AnimationToSvg(NoRate, Noise, Rate, "t");
        EXPECT_EQ(CountOf(Svg, ">audio</text>"), Rate > 0 ? 1 : 0) << Rate;
        EXPECT_EQ(CountOf(Svg, ">frame</text>"), 1) << Rate;
    }
}

TEST(AnimationSvg, TenMinutesStayASmallFile)
{
    const std::vector<float> Mono(16000 * 600, 0.0f);
    const std::string Svg =
        AnimationToSvg(Animation({TEXT("jawOpen"), TEXT("mouthClose"), TEXT("mouthFunnel"),
                                  TEXT("mouthPucker"), TEXT("mouthSmileLeft"), TEXT("mouthSmileRight"),
                                  TEXT("mouthStretchLeft"), TEXT("mouthStretchRight")},
                                 36000, 60),
                       Mono, 16000, "ten minutes");
    EXPECT_EQ(CountOf(Svg, "<path stroke="), 6);
    EXPECT_LT(Svg.size(), 400u * 1024u);
}

TEST(AnimationSvg, ReducedPathKeepsEachColumnsExtremesInOrder)
{
    FColumnReducedPath Path;
    for (const auto& [X, Y] : {std::pair{10.1, 5.0}, {10.3, 9.0}, {10.5, 1.0}, {10.9, 4.0}, {11.2, 3.0}})
    {
        Path.Add(X, Y);
    }
    Path.Break();
    Path.Add(13.0, 2.0);
    EXPECT_EQ(Path.Finish(), "M10.3 9 10.5 1 11.2 3M13 2");
}
