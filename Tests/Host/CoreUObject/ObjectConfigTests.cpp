#include "TestProject.h"
#include "TestTypes.h"

#include <gtest/gtest.h>

namespace
{
class ObjectConfig : public ::testing::Test
{
protected:
    void SetUp() override
    {
        Settings = GetMutableDefault<UTestSettings>();
        ASSERT_NE(Settings, nullptr);
        Settings->Url = TEXT("http://127.0.0.1:9011");
        Settings->Stamp = 0;
        Settings->Colour = ETestColour::Green;
    }

    std::filesystem::path File() const { return Project.ConfigFile("DefaultOrvaneTest.ini"); }

    FTestProject Project;
    UTestSettings* Settings = nullptr;
};

const std::string Section = "[/Script/OrvaneTests.TestSettings]\n";
} // namespace

TEST_F(ObjectConfig, LoadSetsOnlyTheKeysPresentAndKeepsEveryOtherLineOnSave)
{
    FTestProject::Write(File(), "; mine\n" + Section +
                                    "stamp=9007199254740993\nUnknown=kept\ncolour=etestcolour::blue\n");
    Settings->LoadConfig(UTestSettings::StaticClass(), *FTestProject::ToFString(File()));
    EXPECT_EQ(Settings->Url.GetStd(), u"http://127.0.0.1:9011");
    EXPECT_EQ(Settings->Stamp, 9007199254740993);
    EXPECT_EQ(Settings->Colour, ETestColour::Blue);

    Settings->Stamp = 9007199254740995;
    Settings->SaveConfig();
    EXPECT_EQ(FTestProject::Read(File()), "; mine\n" + Section +
                                              "stamp=9007199254740995\nUnknown=kept\n"
                                              "colour=Blue\nUrl=http://127.0.0.1:9011\n"
                                              "Ratio=0.5\nScale=1.0\nbEnabled=True\n");
}
