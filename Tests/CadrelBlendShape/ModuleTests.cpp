#include "CadrelBlendShapeModule.h"
#include "SettingTestFixture.h"

#include "Modules/ModuleManager.h"

// Start-up as the editor runs it: the module manager opens the library, calls
// InitializeModule and then StartupModule.
class FCadrelModuleTest : public FCadrelSettingTest
{
protected:
    void TearDown() override { FModuleManager::Get().UnloadModule(TEXT("CadrelBlendShape")); }
    static IModuleInterface* StartModule()
    {
        return FModuleManager::Get().LoadModule(TEXT("CadrelBlendShape"));
    }
    static void StopModule() { FModuleManager::Get().UnloadModule(TEXT("CadrelBlendShape")); }
};

TEST_F(FCadrelModuleTest, AnEmptyOrMissingFileIsWrittenWithTheDefaults)
{
    IModuleInterface* const Module = StartModule();
    ASSERT_NE(Module, nullptr);
    EXPECT_NE(dynamic_cast<FCadrelBlendShapeModule*>(Module), nullptr);
    StopModule();

    for (const bool bEmptyFile : {false, true})
    {
        FTestProject Scratch;
        if (bEmptyFile)
        {
            FTestProject::Write(Scratch.ConfigFile("DefaultCadrel.ini"), "");
        }
        ASSERT_NE(StartModule(), nullptr);
        StopModule();
        const std::string Saved = FTestProject::Read(Scratch.ConfigFile("DefaultCadrel.ini"));
        for (const char* Line : {"[/Script/CadrelBlendShape.CadrelSetting]", "A2FURL=http://127.0.0.1:9011",
                                 "Token=", "TimeStamp=0"})
        {
            EXPECT_NE(Saved.find(Line), std::string::npos) << Line;
        }
    }
}

TEST_F(FCadrelModuleTest, StartUpLoadsBeforeItSavesAndAgainAfterARestart)
{
    WriteSettings("; the user's note\nToken=abc\n");
    ASSERT_NE(StartModule(), nullptr);
    EXPECT_EQ(Settings().Token, TEXT("abc"));
    const std::string Saved = FTestProject::Read(SettingsFile());
    EXPECT_NE(Saved.find("; the user's note"), std::string::npos);
    EXPECT_NE(Saved.find("Token=abc"), std::string::npos);
    EXPECT_NE(Saved.find("A2FURL=http://127.0.0.1:9011"), std::string::npos);

    // A restart: the host reads the file afresh and finds the user's edit.
    StopModule();
    GConfig->Flush(true, FTestProject::ToFString(SettingsFile()));
    WriteSettings("A2FURL=http://host:1234\n");
    ASSERT_NE(StartModule(), nullptr);
    EXPECT_EQ(Settings().A2FURL, TEXT("http://host:1234"));
    EXPECT_NE(FTestProject::Read(SettingsFile()).find("Token=abc"), std::string::npos);
}

TEST_F(FCadrelModuleTest, StartUpNeverOverwritesWhatItCannotReadNorCrashesWhereItCannotWrite)
{
    const std::string Broken = "[/Script/CadrelBlendShape.CadrelSetting]\nA2FURL=http://x\nnot a setting\n";
    WriteSettings(Broken);
    ASSERT_NE(StartModule(), nullptr);
    StopModule();
    EXPECT_EQ(FTestProject::Read(SettingsFile()), "[/Script/CadrelBlendShape.CadrelSetting]\n" + Broken);
    EXPECT_EQ(Settings().A2FURL, TEXT("http://127.0.0.1:9011"));

    // A file where the configuration directory should be: nothing can be written.
    FTestProject Unwritable;
    FTestProject::Write(Unwritable.Root / "Config", "not a directory");
    ASSERT_NE(StartModule(), nullptr);
    StopModule();
    EXPECT_EQ(FTestProject::Read(Unwritable.Root / "Config"), "not a directory");

    ::setenv("ORVANE_PROJECT_DIR", (Project.Root / "missing").c_str(), 1);
    ASSERT_NE(StartModule(), nullptr);
    EXPECT_FALSE(std::filesystem::exists(Project.Root / "missing"));
}
