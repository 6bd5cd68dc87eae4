#include "SettingTestFixture.h"

#include "HttpModule.h"
#include "Misc/ConfigCacheIni.h"

#include <optional>

// The engine configuration's [HTTP] flush limits before loading, and what loading leaves.
struct FLimitCase
{
    std::optional<double> Soft;
    std::optional<double> Hard;
    double ExpectedSoft;
    double ExpectedHard;
    bool bManagerUpdated;
};

void PrintTo(const FLimitCase& Case, std::ostream* Out)
{
    *Out << "soft " << Case.Soft.value_or(-999) << ", hard " << Case.Hard.value_or(-999);
}

class FCadrelHttpLimitTest : public FCadrelSettingTest, public ::testing::WithParamInterface<FLimitCase>
{
};

TEST_P(FCadrelHttpLimitTest, RaisesOnlyPositiveLimitsUpToTheTargetAndThenUpdatesTheManager)
{
    const FLimitCase& Case = GetParam();
    std::string Engine = "[HTTP]\n";
    Engine += Case.Soft ? "FlushSoftTimeLimitDefault=" + std::to_string(*Case.Soft) + "\n" : "";
    Engine += Case.Hard ? "FlushHardTimeLimitDefault=" + std::to_string(*Case.Hard) + "\n" : "";
    FTestProject::Write(Project.ConfigFile("DefaultEngine.ini"), Engine);
    // The manager starts from limits no case leads to, so that a call of UpdateConfigs shows.
    FHttpManager& Manager = FHttpModule::Get().GetHttpManager();
    {
        FTestProject Marker;
        FTestProject::Write(Marker.ConfigFile("DefaultEngine.ini"),
                            "[HTTP]\nFlushSoftTimeLimitDefault=7\nFlushHardTimeLimitDefault=8\n");
        Manager.UpdateConfigs();
    }
    ::setenv("ORVANE_PROJECT_DIR", Project.Root.c_str(), 1);

    Settings().LoadZELSettingsConfig();

    double Soft = 0.0;
    double Hard = 0.0;
    EXPECT_TRUE(GConfig->GetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), Soft, GEngineIni));
    EXPECT_TRUE(GConfig->GetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), Hard, GEngineIni));
    EXPECT_EQ(Soft, Case.ExpectedSoft);
    EXPECT_EQ(Hard, Case.ExpectedHard);
    EXPECT_EQ(Manager.GetFlushSoftTimeLimit(), Case.bManagerUpdated ? Case.ExpectedSoft : 7.0);
    EXPECT_EQ(Manager.GetFlushHardTimeLimit(), Case.bManagerUpdated ? Case.ExpectedHard : 8.0);
    // Only the cache changes; the engine configuration file is the user's.
    EXPECT_EQ(FTestProject::Read(Project.ConfigFile("DefaultEngine.ini")), Engine);
}

INSTANTIATE_TEST_SUITE_P(Boundaries, FCadrelHttpLimitTest,
                         ::testing::Values(FLimitCase{std::nullopt, std::nullopt, 1200.0, 2400.0, true},
                                           FLimitCase{1200.0, 2400.0, 1200.0, 2400.0, true},
                                           FLimitCase{0.0, 2400.5, 0.0, 2400.5, false},
                                           FLimitCase{1200.5, 100.0, 1200.5, 2400.0, true},
                                           FLimitCase{0.001, -1.0, 1200.0, -1.0, true},
                                           FLimitCase{-5.0, 0.0, -5.0, 0.0, false}));
