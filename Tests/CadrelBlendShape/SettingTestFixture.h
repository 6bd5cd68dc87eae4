#pragma once

// A scratch project per test, with the settings object's default object put back
// to the class's own defaults: that object lives for the whole test process.

#include "Setting/CadrelSetting.h"

#include "TestProject.h"

#include <gtest/gtest.h>

class FCadrelSettingTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const UCadrelSetting Fresh;
        UCadrelSetting& Settings = *GetMutableDefault<UCadrelSetting>();
        Settings.A2FURL = Fresh.A2FURL;
        Settings.Token = Fresh.Token;
        Settings.TimeStamp = Fresh.TimeStamp;
    }

    static UCadrelSetting& Settings() { return *GetMutableDefault<UCadrelSetting>(); }
    std::filesystem::path SettingsFile() const { return Project.ConfigFile("DefaultCadrel.ini"); }
    void WriteSettings(const std::string& Lines) const
    {
        FTestProject::Write(SettingsFile(), "[/Script/CadrelBlendShape.CadrelSetting]\n" + Lines);
    }

    FTestProject Project;
};
