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

// The default document's other fields are the request writer's test.
TEST(Records, EveryRequestHasItsOwnIdentifier)
{
    const FCadrelZELRequest First;
    const FCadrelZELRequest Second;
    EXPECT_TRUE(First.Data.ID.IsValid());
    EXPECT_NE(First.Data.ID, Second.Data.ID);
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
