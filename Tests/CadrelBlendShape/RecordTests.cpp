#include "CadrelBlendShapeType.h"
#include "Interfaces/IPluginManager.h"

#include <gtest/gtest.h>

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
