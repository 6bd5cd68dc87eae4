#include "AnimationCsv.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
FCadrelZELBones Bone(double X, double Y, double Z)
{
    FCadrelZELBones Made;
    Made.BoneValue = FVector(X, Y, Z);
    return Made;
}
} // namespace

TEST(AnimationCsv, HeaderNamesEveryColumnAndRowsHoldTheirValues)
{
    FCadrelZELResponse Animation;
    Animation.FPS = 60;
    Animation.BlendShapesNames = {TEXT("jawOpen"), TEXT("a,b"), TEXT("say \"hi\""), TEXT("two\nlines"),
                                  FString::FromUTF8("m\xC3\xA2\x63hoire")};
    Animation.BonesNames = {TEXT("neck"), TEXT("eye,L")};
    Animation.Frames.Add({{0.0, 0.0, 0.0, 0.0, 0.0}, {Bone(0, 0, 0), Bone(0, 0, 0)}});
    Animation.Frames.Add({{0.1, 1.0 / 3.0, -0.0, 1e-7, 1.0}, {Bone(-5.5, 0.25, 90), Bone(1, 2, 3)}});

    EXPECT_EQ(AnimationToCsv(Animation),
              "frame,time,jawOpen,\"a,b\",\"say \"\"hi\"\"\",\"two\nlines\",m\xC3\xA2\x63hoire,"
              "neck.x,neck.y,neck.z,\"eye,L.x\",\"eye,L.y\",\"eye,L.z\"\r\n"
              "0,0,0,0,0,0,0,0,0,0,0,0,0\r\n"
              "1,0.016666666666666666,0.1,0.3333333333333333,-0,1e-07,1,-5.5,0.25,90,1,2,3\r\n");
}

TEST(AnimationCsv, HostileRecordsKeepEveryRowAsWideAsTheHeader)
{
    FCadrelZELResponse Animation;
    Animation.FPS = 0;
    Animation.BlendShapesNames = {TEXT("a"), TEXT("b")};
    Animation.BonesNames = {TEXT("neck")};
    Animation.Frames.Add({{0.5}, {}});
    Animation.Frames.Add({{0.1, 0.2, 0.3, 0.4}, {Bone(1, 2, 3), Bone(4, 5, 6)}});
    Animation.Frames.Add({{std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()},
                          {Bone(std::numeric_limits<double>::infinity(), 0, 1)}});

    EXPECT_EQ(AnimationToCsv(Animation), "frame,time,a,b,neck.x,neck.y,neck.z\r\n"
                                         "0,,0.5,,,,\r\n"
                                         "1,,0.1,0.2,1,2,3\r\n"
                                         "2,,,,,0,1\r\n");

    Animation.FPS = -1;
    Animation.BlendShapesNames = {};
    Animation.BonesNames = {};
    EXPECT_EQ(AnimationToCsv(Animation), "frame,time\r\n0,\r\n1,\r\n2,\r\n");
}
