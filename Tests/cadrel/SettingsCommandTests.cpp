#include "CadrelRun.h"

#include <gtest/gtest.h>

// The cadrel program as a user runs it, in a scratch project directory.
class FSettingsCommandTest : public FCadrelProjectTest
{
protected:
    std::filesystem::path SettingsFile() const { return Project.ConfigFile("DefaultCadrel.ini"); }
};

TEST_F(FSettingsCommandTest, ShowsWhereEachSettingCameFrom)
{
    EXPECT_NE(Cadrel("settings").Out.find("A2FURL=http://127.0.0.1:9011  # default"), std::string::npos);
    EXPECT_EQ(Cadrel("settings set a2furl http://host:1234").ExitCode, 0);
    EXPECT_EQ(Cadrel("settings set TimeStamp 9223372036854775807").ExitCode, 0);
    const FCadrelRun Shown = Cadrel("settings");
    EXPECT_EQ(Shown.ExitCode, 0) << Shown.Error;
    EXPECT_TRUE(Shown.Error.empty()) << Shown.Error;
    EXPECT_NE(Shown.Out.find(SettingsFile().string()), std::string::npos);
    EXPECT_NE(Shown.Out.find("A2FURL=http://host:1234  # from the file"), std::string::npos) << Shown.Out;
    EXPECT_NE(Shown.Out.find("TimeStamp=9223372036854775807  # from the file"), std::string::npos);
}

TEST_F(FSettingsCommandTest, BadInputCostsOneLineAndANonZeroExitAndKeepsTheFile)
{
    ASSERT_EQ(Cadrel("settings set Token abc").ExitCode, 0);
    const std::string Before = FTestProject::Read(SettingsFile());
    for (const char* Arguments : {"settings set TimeStamp abc", "settings set TimeStamp 9223372036854775808",
                                  "settings set Tokens abc"})
    {
        EXPECT_TRUE(Cadrel(Arguments).IsOneLineFailure()) << Arguments;
        EXPECT_EQ(FTestProject::Read(SettingsFile()), Before) << Arguments;
    }

    // Start-up may add the missing keys, but keeps what it cannot use as written.
    for (const std::string Stored : {"TimeStamp=abc\n", "not a setting\n"})
    {
        const std::string File = "[/Script/CadrelBlendShape.CadrelSetting]\n" + Stored;
        FTestProject::Write(SettingsFile(), File);
        for (const char* Arguments : {"settings", "settings set TimeStamp 5"})
        {
            const FCadrelRun Run = Cadrel(Arguments);
            EXPECT_TRUE(Run.IsOneLineFailure()) << Arguments << ": " << Run.Error;
            EXPECT_NE(Run.Error.find(SettingsFile().string()), std::string::npos) << Run.Error;
            EXPECT_NE(FTestProject::Read(SettingsFile()).find(File), std::string::npos);
        }
    }
}
