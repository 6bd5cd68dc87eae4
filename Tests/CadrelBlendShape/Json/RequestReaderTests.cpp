#include "CadrelJson.h"

#include <gtest/gtest.h>

namespace
{
FCadrelZELRequest Read(const FString& Json, FCadrelZELRequest Request = FCadrelZELRequest())
{
    CadrelJson::StringToZELRequest(Json, Request);
    return Request;
}

// FString compares without regard to case, so texts are compared case-sensitively.
void ExpectText(const FString& Actual, const TCHAR* Expected)
{
    EXPECT_EQ(Actual.GetStd(), std::u16string(Expected));
}
} // namespace

TEST(RequestReader, WrittenRequestReadsBackWhole)
{
    FCadrelZELRequest Written;
    Written.Data.Type = TEXT("t\"\\\n");
    Written.Data.Attributes.Zel.RigType = ECadrelRigType::CUSTOM;
    Written.Data.Attributes.Zel.ExplicitEmotion = ECadrelExplicitEmotion::CEE_Supplication;
    Written.Data.Attributes.Zel.EyeMovementParameters.bEyeMovementMode = true;
    Written.Meta.bEditor = false;
    Written.Meta.PrevSize = -5;
    Written.Meta.Latency = 0.25f;
    Written.Meta.PrevAudioLength = 12;
    Written.Meta.OS = TEXT("Linux");
    FString Json;
    CadrelJson::ZELRequestToString(Written, Json);

    FCadrelZELRequest Blank;
    Blank.Data.Type.Empty();
    Blank.Meta.bEditor = true;
    const FCadrelZELRequest Read = ::Read(Json, Blank);
    FString Again;
    CadrelJson::ZELRequestToString(Read, Again);
    EXPECT_EQ(Again.GetStd(), Json.GetStd());
    EXPECT_EQ(Read.Data.ID, Written.Data.ID);
    EXPECT_FALSE(Read.Meta.bEditor);
    EXPECT_EQ(Read.Meta.Latency, 0.25f);
}

TEST(RequestReader, PresentObjectsOverwriteEveryFieldAbsentOnesKeepTheirGroup)
{
    FCadrelZELRequest Before;
    Before.Data.Type = TEXT("kept");
    const FCadrelZELRequest OnlyMeta = Read(
        TEXT(R"({"meta":{"os":"Mac","prev_size":12.9,"latency":"0.5","prev_audio_length":-1e12}})"), Before);
    ExpectText(OnlyMeta.Data.Type, TEXT("kept"));
    EXPECT_EQ(OnlyMeta.Data.ID, Before.Data.ID);
    ExpectText(OnlyMeta.Meta.OS, TEXT("Mac"));
    EXPECT_TRUE(OnlyMeta.Meta.Platform.IsEmpty());
    EXPECT_EQ(OnlyMeta.Meta.PrevSize, 12);
    EXPECT_EQ(OnlyMeta.Meta.Latency, 0.5f);
    EXPECT_EQ(OnlyMeta.Meta.PrevAudioLength, INT32_MIN);
    EXPECT_TRUE(OnlyMeta.Meta.bEditor);

    const FCadrelZELRequest EmptyZel = Read(TEXT(
        R"({"data":{"id":"nope","attributes":{"zel":{"eyeMovementParameters":{},)"
        R"("neckMovementParameters":{"neckMovementMode":"None"}}}},"meta":{"latency":1e300,"editor":1}})"));
    EXPECT_FALSE(EmptyZel.Data.ID.IsValid());
    EXPECT_TRUE(EmptyZel.Data.Type.IsEmpty());
    EXPECT_TRUE(EmptyZel.Data.Attributes.Zel.Engine.IsEmpty());
    EXPECT_EQ(static_cast<uint8>(EmptyZel.Data.Attributes.Zel.RigType), 255);
    EXPECT_EQ(static_cast<uint8>(EmptyZel.Data.Attributes.Zel.ExplicitEmotion), 255);
    EXPECT_TRUE(EmptyZel.Data.Attributes.Zel.EyeMovementParameters.bEyeMovementMode);
    EXPECT_TRUE(EmptyZel.Data.Attributes.Zel.NeckMovementParameters.bNeckMovementMode);
    EXPECT_EQ(EmptyZel.Meta.Latency, std::numeric_limits<float>::max());
    EXPECT_FALSE(EmptyZel.Meta.bEditor);

    const FCadrelZELRequest NoZel = Read(TEXT(R"({"data":{"type":"x","attributes":{"ZEL":7}}})"), Before);
    ExpectText(NoZel.Data.Type, TEXT("x"));
    ExpectText(NoZel.Data.Attributes.Zel.Engine, TEXT("latest"));
    ExpectText(NoZel.Meta.PlatformVersion, TEXT("5.1"));
}

TEST(RequestReader, RefusedTextsLeaveTheRequestUnchanged)
{
    FCadrelZELRequest Before;
    for (const TCHAR* Json : {TEXT(""), TEXT("[{\"meta\":{\"os\":\"x\"}}]"), TEXT("{\"meta\":{\"os\":\"x\"}"),
                              TEXT("{\"meta\":{\"os\":\"x\"}}x")})
    {
        const FCadrelZELRequest After = Read(Json, Before);
        ExpectText(After.Meta.OS, TEXT("Windows"));
        EXPECT_EQ(After.Data.ID, Before.Data.ID);
    }
}
