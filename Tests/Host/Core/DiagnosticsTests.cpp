#include "CoreMinimal.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace
{
ORV_DEFINE_LOG_CATEGORY_STATIC(LogDiagnosticsTest, Log, All);

class FCapture : public FOutputDevice
{
public:
    FCapture() { GLog->AddOutputDevice(this); }
    ~FCapture() override { GLog->RemoveOutputDevice(this); }
    void Serialize(const TCHAR* Text, ELogVerbosity::Type Verbosity, const FName& Category) override
    {
        Lines.Add(Category.ToString() + TEXT("|") + ELogVerbosity::ToString(Verbosity) + TEXT("|") + Text);
    }
    TArray<FString> Lines;
};

bool FailOnce(bool bCondition)
{
    return ORV_ENSURE(bCondition);
}
} // namespace

TEST(Log, LinesReachOutputDevicesAndRespectVerbosity)
{
    FCapture Capture;
    ORV_LOG(LogDiagnosticsTest, Log, TEXT("Delay=%f"), 0.5);
    ORV_LOG(LogDiagnosticsTest, Verbose, TEXT("hidden"));
    ASSERT_EQ(Capture.Lines.Num(), 1);
    EXPECT_EQ(Capture.Lines[0].GetStd(), u"LogDiagnosticsTest|Log|Delay=0.500000");
}

TEST(Ensure, ReportsOncePerCallSiteAndContinues)
{
    FCapture Capture;
    EXPECT_TRUE(FailOnce(true));
    EXPECT_FALSE(FailOnce(false));
    EXPECT_FALSE(FailOnce(false));
    ASSERT_EQ(Capture.Lines.Num(), 1);
    EXPECT_TRUE(Capture.Lines[0].Contains(TEXT("bCondition")));
}

TEST(Culture, NameComesFromTheLocaleAndCanBeSet)
{
    EXPECT_EQ(FInternationalization::CultureNameFromLocale("en_US.UTF-8").GetStd(), u"en-US");
    EXPECT_EQ(FInternationalization::CultureNameFromLocale("de_DE@euro").GetStd(), u"de-DE");
    EXPECT_TRUE(FInternationalization::CultureNameFromLocale("C").IsEmpty());
    EXPECT_TRUE(FInternationalization::CultureNameFromLocale("POSIX").IsEmpty());
    EXPECT_TRUE(FInternationalization::CultureNameFromLocale("").IsEmpty());

    const FString Before = FInternationalization::Get().GetCurrentCulture()->GetName();
    FInternationalization::Get().SetCurrentCulture(TEXT("de-DE"));
    EXPECT_EQ(FInternationalization::Get().GetCurrentCulture()->GetName().GetStd(), u"de-DE");
    FInternationalization::Get().SetCurrentCulture(Before);
}

TEST(Paths, ProjectDirFollowsTheEnvironment)
{
    ::setenv("ORVANE_PROJECT_DIR", "/tmp/some-project", 1);
    EXPECT_EQ(FPaths::ProjectDir().GetStd(), u"/tmp/some-project/");
    EXPECT_EQ(FPaths::ProjectConfigDir().GetStd(), u"/tmp/some-project/Config/");
    ::unsetenv("ORVANE_PROJECT_DIR");
    EXPECT_TRUE(FPaths::ProjectDir().EndsWith(TEXT("/")));
}
