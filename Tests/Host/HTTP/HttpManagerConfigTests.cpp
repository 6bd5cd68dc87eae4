#include "HttpModule.h"
#include "Misc/ConfigCacheIni.h"

#include "../CoreUObject/TestProject.h"

#include <gtest/gtest.h>

TEST(HttpManager, UpdateConfigsRereadsTheFlushLimitsOfTheEngineConfiguration)
{
    FTestProject Project;
    const std::string Engine = "[HTTP]\nFlushSoftTimeLimitDefault=0\n";
    FTestProject::Write(Project.ConfigFile("DefaultEngine.ini"), Engine);

    FHttpManager& Manager = FHttpModule::Get().GetHttpManager();
    Manager.UpdateConfigs();
    EXPECT_EQ(Manager.GetFlushSoftTimeLimit(), 0.0);
    EXPECT_EQ(Manager.GetFlushHardTimeLimit(), 4.0);

    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushSoftTimeLimitDefault"), 1200.0, GEngineIni);
    GConfig->SetDouble(TEXT("HTTP"), TEXT("FlushHardTimeLimitDefault"), 2400.0, GEngineIni);
    Manager.UpdateConfigs();
    EXPECT_EQ(Manager.GetFlushSoftTimeLimit(), 1200.0);
    EXPECT_EQ(Manager.GetFlushHardTimeLimit(), 2400.0);
    EXPECT_EQ(FTestProject::Read(Project.ConfigFile("DefaultEngine.ini")), Engine);
}
