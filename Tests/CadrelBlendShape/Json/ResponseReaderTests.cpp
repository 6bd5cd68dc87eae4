#include "ReadPaths.h"
#include "RecordText.h"

#include <limits>

namespace
{
class ResponseReader : public testing::TestWithParam<EReadPath>
{
protected:
    FCadrelZELResponse Read(const std::string& Json)
    {
        FCadrelZELResponse Response;
        ReadWith(GetParam(), Json, Response);
        return Response;
    }
};

const std::string TwoFrames =
    R"({"version":"1.2","platform":"cloud","fps":60,"frames":[)"
    R"({"blendshapes":[0.5,1,0],"bones":[{"eul":[0.1,0.2,0.3]}]},)"
    R"({"blendshapes":[0.25,0,1],"bones":[{"eul":[-1,-2,-3]}]}],)"
    R"("blendShapesNames":["jawOpen","mouthClose","eyeBlink"],"bonesNames":["neck"]})";
} // namespace

CADREL_INSTANTIATE_READ_PATHS(ResponseReader);

TEST_P(ResponseReader, ReadsFramesBonesNamesAndScalars)
{
    const FCadrelZELResponse Response = Read(TwoFrames);
    ASSERT_EQ(Response.Frames.Num(), 2);
    EXPECT_EQ(Response.Frames[0].Blendshapes, (TArray<double>{0.5, 1.0, 0.0}));
    EXPECT_EQ(Response.Frames[1].Blendshapes, (TArray<double>{0.25, 0.0, 1.0}));
    ASSERT_EQ(Response.Frames[0].Bones.Num(), 1);
    EXPECT_EQ(Response.Frames[0].Bones[0].BoneName.GetStd(), u"eul");
    EXPECT_EQ(Response.Frames[0].Bones[0].BoneValue, FVector(0.1, 0.2, 0.3));
    EXPECT_EQ(Response.Frames[1].Bones[0].BoneValue, FVector(-1.0, -2.0, -3.0));
    EXPECT_EQ(Response.BlendShapesNames,
              (TArray<FString>{TEXT("jawOpen"), TEXT("mouthClose"), TEXT("eyeBlink")}));
    EXPECT_EQ(Response.BonesNames, (TArray<FString>{TEXT("neck")}));
    EXPECT_EQ(Response.Version.GetStd(), u"1.2");
    EXPECT_EQ(Response.Platform.GetStd(), u"cloud");
    EXPECT_EQ(Response.FPS, 60);
}

TEST_P(ResponseReader, AppendsArraysButOverwritesScalarsEvenWhenAbsent)
{
    FCadrelZELResponse Response;
    ReadWith(GetParam(), TwoFrames, Response);
    ReadWith(GetParam(), TwoFrames, Response);
    EXPECT_EQ(Response.Frames.Num(), 4);
    EXPECT_EQ(Response.BlendShapesNames.Num(), 6);
    EXPECT_EQ(Response.BonesNames.Num(), 2);
    EXPECT_EQ(Response.FPS, 60);

    ReadWith(GetParam(), R"({"FRAMES":[{"BlendShapes":[2]}]})", Response);
    EXPECT_EQ(Response.Frames.Num(), 5);
    EXPECT_EQ(Response.Frames[4].Blendshapes, (TArray<double>{2.0}));
    EXPECT_EQ(Response.BlendShapesNames.Num(), 6);
    EXPECT_TRUE(Response.Version.IsEmpty());
    EXPECT_TRUE(Response.Platform.IsEmpty());
    EXPECT_EQ(Response.FPS, 0);
}

TEST_P(ResponseReader, FpsTruncatesTowardZeroAndSaturates)
{
    constexpr int32 Max = std::numeric_limits<int32>::max();
    constexpr int32 Min = std::numeric_limits<int32>::min();
    const std::pair<const char*, int32> Cases[] = {
        {"29.97", 29}, {"-0.5", 0},     {"-29.9", -29},        {"\"30\"", 30}, {"\"30 \"", 0},
        {"1e10", Max}, {"-1e300", Min}, {"2147483647.9", Max}, {"true", 0},    {"[60]", 0},
    };
    for (const auto& [Fps, Expected] : Cases)
    {
        EXPECT_EQ(Read(std::string(R"({"fps":)") + Fps + "}").FPS, Expected) << Fps;
    }
}

TEST_P(ResponseReader, OddElementsKeepFramePositionsAndSkipBones)
{
    const FCadrelZELResponse Response = Read(
        R"({"frames":[1,{},{"blendshapes":[null,"0.5","x",true,[1]],"bones":[3,{"x":[1,2,3]},)"
        R"({"eul":[1,2]},{"eul":"abc"},{"eul":[4,5,6,7]}]}],"blendShapesNames":[1.5,true,null,{},"a"]})");
    ASSERT_EQ(Response.Frames.Num(), 3);
    EXPECT_TRUE(Response.Frames[0].Blendshapes.IsEmpty());
    EXPECT_TRUE(Response.Frames[1].Bones.IsEmpty());
    const FCadrelFaceFrames& Frame = Response.Frames[2];
    EXPECT_EQ(Frame.Blendshapes, (TArray<double>{0.0, 0.5, 0.0, 0.0, 0.0}));
    // Short or mistyped "eul" still adds a named bone, without a value read from the answer.
    ASSERT_EQ(Frame.Bones.Num(), 3);
    EXPECT_EQ(Frame.Bones[0].BoneName.GetStd(), u"eul");
    EXPECT_EQ(Frame.Bones[0].BoneValue, FVector::ZeroVector);
    EXPECT_EQ(Frame.Bones[1].BoneValue, FVector::ZeroVector);
    EXPECT_EQ(Frame.Bones[2].BoneValue, FVector(4.0, 5.0, 6.0));
    EXPECT_EQ(Response.BlendShapesNames,
              (TArray<FString>{TEXT("1.5"), TEXT("true"), TEXT(""), TEXT(""), TEXT("a")}));
    EXPECT_TRUE(Read(R"({"frames":{"frames":[{}]},"fps":2})").Frames.IsEmpty());
}

TEST_P(ResponseReader, LaterDuplicateKeysWinWhateverTheirCase)
{
    const FCadrelZELResponse Response =
        Read(R"({"frames":[{},{}],"Frames":[{"blendshapes":[1],"BlendShapes":[2,3],)"
             R"("bones":[{"eul":[1,1,1]}],"BONES":[{"eul":[1,1,1],"Eul":[2,2,2]}]}],)"
             R"("fps":30,"FPS":"24","bonesNames":["a"],"bonesnames":{}})");
    ASSERT_EQ(Response.Frames.Num(), 1);
    EXPECT_EQ(Response.Frames[0].Blendshapes, (TArray<double>{2.0, 3.0}));
    ASSERT_EQ(Response.Frames[0].Bones.Num(), 1);
    EXPECT_EQ(Response.Frames[0].Bones[0].BoneValue, FVector(2.0));
    EXPECT_EQ(Response.FPS, 24);
    EXPECT_TRUE(Response.BonesNames.IsEmpty());
}

// Plain syntax errors are left to the conformance corpus and the differential fuzzer;
// these are the checks the fast walk makes on its own, in values the reader never
// looks at too: literals, number forms, escapes, a byte order mark, trailing
// content and nesting.
TEST_P(ResponseReader, RefusedTextsLeaveTheRecordUnchanged)
{
    const std::string Refused[] = {R"({"fps":1,"x":[tru]})",
                                   R"({"fps":1,"x":{"a":nulls}})",
                                   R"({"fps":1,"x":nul})",
                                   R"({"fps":1,"x":-})",
                                   R"({"fps":1,"x":[1,]})",
                                   R"({"fps":1,"x":"\u12"})",
                                   R"({"fps":1,"x":"\x"})",
                                   R"({"fps":1,"x":"\ud800"})",
                                   "{\"fps\":1,\"x\":\"a\x01\"}",
                                   "\xEF\xBB\xBF{\"fps\":1}",
                                   R"({"fps":1e400})",
                                   R"({"fps":123456789012345678901234567890})",
                                   R"({"fps":-01})",
                                   R"([{"fps":1}])",
                                   R"({"fps":1)",
                                   R"({"fps":1}})",
                                   R"({"fps":1} {"fps":2})",
                                   R"({"fps":1,})",
                                   std::string("{\"fps\":1}\0", 10),
                                   R"({"fps":1,"x":)" + std::string(100000, '[') + std::string(100000, ']') +
                                       "}"};
    for (const std::string& Json : Refused)
    {
        FCadrelZELResponse Response;
        ReadWith(GetParam(), TwoFrames, Response);
        const std::string Before = CadrelRecordText::Of(Response);
        ReadWith(GetParam(), Json, Response);
        EXPECT_EQ(CadrelRecordText::Of(Response), Before) << Json.substr(0, 60);
    }
}
