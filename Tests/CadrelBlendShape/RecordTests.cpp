#include "CadrelBlendShapeType.h"
#include "Interfaces/IPluginManager.h"

#include <gtest/gtest.h>

#include <utility>

namespace
{
bool SameText(const FString& Lhs, const TCHAR* Rhs)
{
    return Lhs.Equals(FString(Rhs), ESearchCase::CaseSensitive);
}
} // namespace

TEST(Records, RequestDefaultsAndIdentifiers)
{
    const FCadrelZELRequest First;
    const FCadrelZELRequest Second;
    const FCadrelZELInfo& Zel = First.Data.Attributes.Zel;
    EXPECT_EQ(static_cast<int>(Zel.ExplicitEmotion), 1);
    EXPECT_EQ(Zel.RigType, ECadrelRigType::VIRETH);
    EXPECT_FALSE(Zel.EyeMovementParameters.bEyeMovementMode || Zel.NeckMovementParameters.bNeckMovementMode);
    EXPECT_TRUE(SameText(First.Meta.PlatformVersion, TEXT("5.1")));
    EXPECT_TRUE(First.Data.ID.IsValid());
    EXPECT_NE(First.Data.ID, Second.Data.ID);

    FCadrelZELRequest Copy = First;
    EXPECT_EQ(Copy.Data.ID, First.Data.ID);
    Copy = Second;
    EXPECT_EQ(Copy.Data.ID, Second.Data.ID);

    const FCadrelZELRequestParam Param;
    EXPECT_FALSE(Param.ID.IsValid());
    EXPECT_EQ(Param.Index, -1);
    EXPECT_EQ(Param.MainIndex, -1);
    EXPECT_EQ(Param.LinkServerType, EBlendShapeType::VIRETHIO);
}

TEST(Records, CopiesAreDeepAndMovesLeaveTheSourceEmpty)
{
    FCadrelZELRequest Request;
    const FGuid Id = Request.Data.ID;
    const FCadrelZELRequest Moved = std::move(Request);
    EXPECT_EQ(Moved.Data.ID, Id);
    EXPECT_TRUE(SameText(Moved.Data.Type, TEXT("cadrel")));
    EXPECT_TRUE(Request.Data.Type.IsEmpty() && Request.Meta.PluginVersion.IsEmpty());

    FCadrelZELResponse Response;
    EXPECT_EQ(Response.FPS, -1);
    EXPECT_EQ(FCadrelZELBones().BoneValue, FVector::ZeroVector);
    EXPECT_EQ(FCadrelAudio2FaceBlendShapeInfo().NumFrames, -1);
    Response.Version = TEXT("2");
    Response.Frames.AddDefaulted_GetRef().Bones.Add(FCadrelZELBones{TEXT("eul"), FVector(1.0, 2.0, 3.0)});
    FCadrelZELResponse Copy = Response;
    Copy.Frames[0].Bones[0].BoneValue.X = 9.0;
    EXPECT_EQ(Response.Frames[0].Bones[0].BoneValue, FVector(1.0, 2.0, 3.0));
    Copy = std::move(Response);
    EXPECT_TRUE(Response.Version.IsEmpty() && Response.Frames.IsEmpty());
    EXPECT_EQ(Copy.Frames.Num(), 1);
}

TEST(Records, StreamElementCopiesItsPartsAndItsBinding)
{
    FCadrelZELRequestParam Param;
    Param.MainIndex = 4;
    Param.Index = 7;
    TArray<uint8> Wav;
    for (uint8 Byte = 0; Byte < 44; ++Byte)
    {
        Wav.Add(Byte);
    }
    FCadrelZELRequest Request;
    FCadrelVelkStreamQueueElement Element(Request, Param, Wav);
    EXPECT_EQ(Element.ZELInfo.Data.ID, Request.Data.ID);
    EXPECT_EQ(Element.AudioData, Wav);
    EXPECT_FALSE(Element.bExecute || Element.EndPlayDelegate.IsBound());

    int32 Calls = 0;
    int32 Sum = 0;
    Element.EndPlayDelegate.BindLambda(
        [&](int32 MainIndex, int32 Index, const FString&)
        {
            ++Calls;
            Sum += MainIndex * 10 + Index;
        });
    const FCadrelVelkStreamQueueElement Copy = Element;
    ASSERT_TRUE(Copy.EndPlayDelegate.IsBound());
    Copy.EndPlayDelegate.ExecuteIfBound(Copy.Param.MainIndex, Copy.Param.Index, FString());
    Element.EndPlayDelegate.ExecuteIfBound(Element.Param.MainIndex, Element.Param.Index, FString());
    EXPECT_EQ(Calls, 2);
    EXPECT_EQ(Sum, 94);
}

TEST(Records, MetaTakesPluginVersionAndCultureFromTheHost)
{
    const FString Previous = FInternationalization::Get().GetCurrentCulture()->GetName();
    FInternationalization::Get().SetCurrentCulture(TEXT(""));
    EXPECT_TRUE(SameText(FCadrelIORequestMeta().Local, TEXT("zh-CN")));
    FInternationalization::Get().SetCurrentCulture(TEXT("en-GB"));
    EXPECT_TRUE(SameText(FCadrelIORequestMeta().Local, TEXT("en-GB")));
    FInternationalization::Get().SetCurrentCulture(Previous);

    const TSharedPtr<IPlugin> Plugin = IPluginManager::Get().FindPlugin(TEXT("Cadrel"));
    ASSERT_TRUE(Plugin.IsValid());
    EXPECT_TRUE(SameText(FCadrelIORequestMeta().PluginVersion, *Plugin->GetDescriptor().VersionName));
}
