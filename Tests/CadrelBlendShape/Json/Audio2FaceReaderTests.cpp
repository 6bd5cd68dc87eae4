#include "ReadPaths.h"

namespace
{
class Audio2FaceReader : public testing::TestWithParam<EReadPath>
{
};

const std::string Export = R"({"exportFps":60,"trackPath":"/World/Player","numPoses":2,"numFrames":2,)"
                           R"("facsNames":["EyeBlinkLeft","JawOpen"],"weightMat":[[0.5,1.0],[0.25,0.0]]})";
} // namespace

CADREL_INSTANTIATE_READ_PATHS(Audio2FaceReader);

// How an export becomes a response is Audio2FaceConversion's test.
TEST_P(Audio2FaceReader, ReadsTwiceAppendingArrays)
{
    FCadrelAudio2FaceBlendShapeInfo Info;
    ReadWith(GetParam(), Export, Info);
    EXPECT_EQ(Info.ExportFps, 60);
    EXPECT_EQ(Info.TrackPath.GetStd(), u"/World/Player");
    EXPECT_EQ(Info.NumPoses, 2);
    EXPECT_EQ(Info.NumFrames, 2);
    EXPECT_EQ(Info.FacsNames, (TArray<FString>{TEXT("EyeBlinkLeft"), TEXT("JawOpen")}));
    ASSERT_EQ(Info.WeightMat.Num(), 2);
    EXPECT_EQ(Info.WeightMat[1].Weight, (TArray<double>{0.25, 0.0}));

    ReadWith(GetParam(), Export, Info);
    EXPECT_EQ(Info.FacsNames.Num(), 4);
    EXPECT_EQ(Info.WeightMat.Num(), 4);
    EXPECT_EQ(Info.ExportFps, 60);
}

TEST_P(Audio2FaceReader, AbsentCountsBecomeZeroAndOddRowsStayAligned)
{
    FCadrelAudio2FaceBlendShapeInfo Info;
    ReadWith(GetParam(), R"({"EXPORTFPS":29.97,"weightMat":[[1,"2",null],{},[3]],"facsNames":[true,7]})",
             Info);
    EXPECT_EQ(Info.ExportFps, 29);
    EXPECT_EQ(Info.NumPoses, 0);
    EXPECT_EQ(Info.NumFrames, 0);
    EXPECT_TRUE(Info.TrackPath.IsEmpty());
    ASSERT_EQ(Info.WeightMat.Num(), 3);
    EXPECT_EQ(Info.WeightMat[0].Weight, (TArray<double>{1.0, 2.0, 0.0}));
    EXPECT_TRUE(Info.WeightMat[1].Weight.IsEmpty());
    EXPECT_EQ(Info.FacsNames, (TArray<FString>{TEXT("true"), TEXT("7")}));

    FCadrelAudio2FaceBlendShapeInfo Untouched;
    ReadWith(GetParam(), R"([{"exportFps":60}])", Untouched);
    EXPECT_EQ(Untouched.ExportFps, -1);
}

TEST(Audio2FaceConversion, KeepsBonesOfExistingFramesAndReplacesNames)
{
    // The copying and the moving conversion give the same response.
    for (const bool bMove : {false, true})
    {
        FCadrelAudio2FaceBlendShapeInfo Info;
        Info.ExportFps = 30;
        Info.FacsNames = {TEXT("a")};
        Info.WeightMat.SetNum(2);
        Info.WeightMat[0].Weight = {0.5, 0.25, 1.0};
        Info.WeightMat[1].Weight = {1.0};

        FCadrelZELResponse Response;
        Response.Version = TEXT("kept");
        Response.BlendShapesNames = {TEXT("x"), TEXT("y")};
        Response.Frames.SetNum(5);
        for (FCadrelFaceFrames& Frame : Response.Frames)
        {
            Frame.Blendshapes = {9.0, 9.0};
            Frame.Bones.AddDefaulted();
        }
        bMove ? CadrelJson::Audio2FaceBlendShapeToZELResponse(std::move(Info), Response, 2.0)
              : CadrelJson::Audio2FaceBlendShapeToZELResponse(Info, Response, 2.0);
        EXPECT_EQ(Response.BlendShapesNames, (TArray<FString>{TEXT("a")})) << bMove;
        ASSERT_EQ(Response.Frames.Num(), 2) << bMove;
        EXPECT_EQ(Response.Frames[0].Blendshapes, (TArray<double>{1.0, 0.5, 2.0})) << bMove;
        EXPECT_EQ(Response.Frames[1].Blendshapes, (TArray<double>{2.0})) << bMove;
        EXPECT_EQ(Response.Frames[1].Bones.Num(), 1) << bMove;
        EXPECT_EQ(Response.Version.GetStd(), u"kept") << bMove;
        EXPECT_EQ(Response.Platform.GetStd(), u"1.0.0") << bMove;
        EXPECT_EQ(Response.FPS, 30) << bMove;
    }

    FCadrelZELResponse FromDefault;
    CadrelJson::Audio2FaceBlendShapeToZELResponse(FCadrelAudio2FaceBlendShapeInfo(), FromDefault, 1.0);
    EXPECT_EQ(FromDefault.FPS, -1);
    EXPECT_TRUE(FromDefault.Frames.IsEmpty());
}
