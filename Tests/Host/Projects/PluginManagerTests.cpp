#include "Interfaces/IPluginManager.h"
#include "LogCapture.h"
#include "TestProject.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
bool SameText(const FString& Lhs, const TCHAR* Rhs)
{
    return Lhs.Equals(FString(Rhs), ESearchCase::CaseSensitive);
}

FPluginDescriptor Sample()
{
    FPluginDescriptor Descriptor;
    Descriptor.VersionName = TEXT("kept");
    return Descriptor;
}
} // namespace

TEST(PluginDescriptor, ReadsKnownKeysInAnyCaseAndRejectsWrongTypes)
{
    FPluginDescriptor Descriptor = Sample();
    FString Reason;
    ASSERT_TRUE(Descriptor.Read(
        TEXT("\uFEFF{\"versionname\":\"1.0\",\"Version\":2,\"Extra\":[1],\"VersionName\":\"1.1\"}"), Reason))
        << Reason.ToUTF8();
    EXPECT_TRUE(SameText(Descriptor.VersionName, TEXT("1.1")));
    EXPECT_EQ(Descriptor.Version, 2);
    EXPECT_TRUE(Descriptor.FriendlyName.IsEmpty());

    for (const TCHAR* Bad :
         {TEXT("{\"VersionName\":\"1.0\""), TEXT("[]"), TEXT("{\"Version\":\"1\"}"),
          TEXT("{\"Version\":1.5}"), TEXT("{\"Version\":4294967296}"), TEXT("{\"VersionName\":1}"), TEXT("")})
    {
        Descriptor = Sample();
        Reason.Empty();
        EXPECT_FALSE(Descriptor.Read(Bad, Reason)) << FString(Bad).ToUTF8();
        EXPECT_FALSE(Reason.IsEmpty());
        EXPECT_TRUE(SameText(Descriptor.VersionName, TEXT("kept")));
    }
    EXPECT_FALSE(Descriptor.Load(TEXT("/nonexistent/None.uplugin"), Reason));
}

// The manager scans once per process, so a project folder is tried in a fresh child process.
TEST(PluginManagerDeathTest, ProjectPluginsReplaceLibraryOnesAndBrokenOnesAreSkippedOnce)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto Check = []
    {
        FTestProject Project;
        FTestProject::Write(Project.Root / "Plugins/Cadrel/Cadrel.uplugin",
                            R"({"VersionName":"2.0.0-project"})");
        FTestProject::Write(Project.Root / "Plugins/Broken/Broken.uplugin", R"({"VersionName":)");
        FLogCapture Log;
        const TSharedPtr<IPlugin> Cadrel = IPluginManager::Get().FindPlugin(TEXT("Cadrel"));
        return Cadrel && SameText(Cadrel->GetDescriptor().VersionName, TEXT("2.0.0-project")) &&
               !IPluginManager::Get().FindPlugin(TEXT("Broken")).IsValid() &&
               Log.CountContaining(TEXT("Broken.uplugin")) == 1;
    };
    EXPECT_EXIT(std::exit(Check() ? 0 : 1), ::testing::ExitedWithCode(0), "");
}
