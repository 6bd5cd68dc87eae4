#include "AnimationJson.h"
#include "CadrelJson.h"
#include "RecordText.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
// The bytes as a file holds them, as `cadrel convert` reads them.
FCadrelZELResponse ReadBack(const std::string& Json)
{
    FCadrelZELResponse Read;
    CadrelJson::StringToZELResponse(
        TArray<uint8>(reinterpret_cast<const uint8*>(Json.data()), static_cast<int32>(Json.size())), Read);
    return Read;
}

FCadrelZELBones Bone(double X, double Y, double Z)
{
    FCadrelZELBones Made;
    Made.BoneName = TEXT("eul");
    Made.BoneValue = FVector(X, Y, Z);
    return Made;
}
} // namespace

// Numbers that are not finite, written as null and read as 0 with every frame and bone
// in its place, are AnimationWritersFuzzer's: it checks that on every record it makes.
TEST(AnimationJson, ReadsBackIntoAnIdenticalRecord)
{
    constexpr double Max = std::numeric_limits<double>::max();
    constexpr double Tiny = std::numeric_limits<double>::denorm_min();
    FCadrelZELResponse Animation;
    Animation.Version = TEXT("1.0.0");
    Animation.Platform = FString::FromUTF8("orvane \xE2\x80\x94 test");
    Animation.FPS = 60;
    Animation.BlendShapesNames = {TEXT("jawOpen"), FString::FromUTF8("m\xC3\xA2\x63hoire \xE9\xA1\x8E"),
                                  FString::FromUTF8("smile \xF0\x9F\x98\x80"),
                                  TEXT("quote\" back\\ tab\t\x01")};
    Animation.BonesNames = {TEXT("neck"), TEXT("EyeLeft")};
    Animation.Frames.Add(
        {{0.1, 1.0 / 3.0, -1e-320, Tiny}, {Bone(-Max, 1e-7, 123456789.123), Bone(0, -1e300, 2.5)}});
    Animation.Frames.Add({{}, {}});
    Animation.Frames.Add({{1.0, 0.0, 0.30000000000000004, 5e-324, 7.0}, {Bone(0.5, 0.25, 0.125)}});

    EXPECT_EQ(CadrelRecordText::Of(ReadBack(AnimationToJson(Animation))), CadrelRecordText::Of(Animation));
    EXPECT_EQ(CadrelRecordText::Of(ReadBack(AnimationToJson({}))),
              CadrelRecordText::Of(FCadrelZELResponse()));
}
