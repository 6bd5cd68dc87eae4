#include "Misc/ConfigCacheIni.h"

#include "LogCapture.h"
#include "TestProject.h"

#include <gtest/gtest.h>

#include <limits>

namespace
{
class ConfigCacheIni : public ::testing::Test
{
protected:
    FTestProject Project;
    FString File = FTestProject::ToFString(Project.ConfigFile("DefaultTest.ini"));
};
} // namespace

TEST_F(ConfigCacheIni, RewriteKeepsCommentsUnknownSectionsAndUntouchedLines)
{
    FTestProject::Write(Project.ConfigFile("DefaultTest.ini"), "; settings\n"
                                                               "[Other]\n"
                                                               "  Spaced = kept as is  \n"
                                                               "\n"
                                                               "[Mine]\n"
                                                               "a=1\n"
                                                               "; trailing note\n"
                                                               "\n"
                                                               "[Last]\n"
                                                               "x=y\n");
    GConfig->SetString(TEXT("MINE"), TEXT("A"), TEXT("2"), File);
    GConfig->SetString(TEXT("Mine"), TEXT("New"), TEXT("value with spaces"), File);
    GConfig->SetString(TEXT("Added"), TEXT("K"), TEXT("v"), File);
    ASSERT_TRUE(GConfig->Flush(false, File));
    EXPECT_EQ(FTestProject::Read(Project.ConfigFile("DefaultTest.ini")), "; settings\n"
                                                                         "[Other]\n"
                                                                         "  Spaced = kept as is  \n"
                                                                         "\n"
                                                                         "[Mine]\n"
                                                                         "a=2\n"
                                                                         "; trailing note\n"
                                                                         "New=value with spaces\n"
                                                                         "\n"
                                                                         "[Last]\n"
                                                                         "x=y\n"
                                                                         "\n"
                                                                         "[Added]\n"
                                                                         "K=v\n");
    FString Spaced;
    EXPECT_TRUE(GConfig->GetString(TEXT("other"), TEXT("spaced"), Spaced, File));
    EXPECT_EQ(Spaced.GetStd(), u"kept as is");
}

TEST_F(ConfigCacheIni, ValuesReadBackExactlyAfterAReload)
{
    const FString Strings[] = {TEXT(""),         TEXT(" leading"),          TEXT("trailing\t"),
                               TEXT("\"quoted"), TEXT("line\nbreak\r\x01"), TEXT("C:\\path\\n"),
                               TEXT("ünï 😀 =;#")};
    for (int32 Index = 0; Index < 7; ++Index)
    {
        GConfig->SetString(TEXT("S"), FString::Printf(TEXT("S%d"), Index), Strings[Index], File);
    }
    const int64 Int64s[] = {9007199254740993, std::numeric_limits<int64>::min(),
                            std::numeric_limits<int64>::max()};
    for (int32 Index = 0; Index < 3; ++Index)
    {
        GConfig->SetInt64(TEXT("S"), FString::Printf(TEXT("I%d"), Index), Int64s[Index], File);
    }
    GConfig->SetDouble(TEXT("S"), TEXT("D"), 0.1, File);
    GConfig->SetDouble(TEXT("S"), TEXT("Whole"), 1200.0, File);
    ASSERT_TRUE(GConfig->Flush(true, File));
    EXPECT_NE(FTestProject::Read(Project.ConfigFile("DefaultTest.ini")).find("Whole=1200.0\n"),
              std::string::npos);

    for (int32 Index = 0; Index < 7; ++Index)
    {
        FString Value = TEXT("unset");
        EXPECT_TRUE(GConfig->GetString(TEXT("S"), FString::Printf(TEXT("S%d"), Index), Value, File));
        EXPECT_TRUE(Value.Equals(Strings[Index], ESearchCase::CaseSensitive)) << Index;
    }
    for (int32 Index = 0; Index < 3; ++Index)
    {
        int64 Value = 0;
        EXPECT_TRUE(GConfig->GetInt64(TEXT("S"), FString::Printf(TEXT("I%d"), Index), Value, File));
        EXPECT_EQ(Value, Int64s[Index]);
    }
    double Value = 0.0;
    EXPECT_TRUE(GConfig->GetDouble(TEXT("S"), TEXT("D"), Value, File));
    EXPECT_EQ(Value, 0.1);
}

// Each text has one line the reader cannot take; the file must come through
// start-up's load and save byte for byte.
TEST_F(ConfigCacheIni, UnreadableFilesAreLoggedOnceAndNeverOverwritten)
{
    const std::pair<std::string, int32> Broken[] = {
        {"[S]\nA=1\n[Broken\n", 3}, {"[S]\nno equals sign\n", 2},
        {"[S]\nK\x01y=1\n", 2},     {"[S]\nA=\xff\xfe\n", 2},
        {"A=1\n[S]\n", 1},          {"[S]\nA=\"unterminated\n", 2},
        {"[S]\r\n=value\r\n", 2},   {"\xEF\xBB\xBF[]\n", 1},
    };
    int32 Case = 0;
    for (const auto& [Bytes, Line] : Broken)
    {
        const std::filesystem::path Path = Project.ConfigFile("Broken" + std::to_string(Case++) + ".ini");
        FTestProject::Write(Path, Bytes);
        const FString Name = FTestProject::ToFString(Path);
        FLogCapture Log;
        FString Value = TEXT("unset");
        EXPECT_FALSE(GConfig->GetString(TEXT("S"), TEXT("A"), Value, Name));
        EXPECT_EQ(Value.GetStd(), u"unset");
        GConfig->SetString(TEXT("S"), TEXT("A"), TEXT("2"), Name);
        EXPECT_FALSE(GConfig->Flush(false, Name));
        EXPECT_EQ(FTestProject::Read(Path), Bytes);
        ASSERT_EQ(Log.Lines.Num(), 1) << Bytes;
        EXPECT_TRUE(Log.Lines[0].Contains(Name)) << Log.Lines[0].ToUTF8();
        EXPECT_TRUE(Log.Lines[0].Contains(FString::Printf(TEXT("line %d "), Line))) << Log.Lines[0].ToUTF8();
    }
}

// That an empty or missing file, in a missing Config/, is written is the module's start-up test.
TEST_F(ConfigCacheIni, LineEndingsAndByteOrderMarksSurviveARewrite)
{
    FTestProject::Write(Project.ConfigFile("DefaultTest.ini"), "\xEF\xBB\xBF[S]\r\nA=1\r\n");
    GConfig->SetString(TEXT("S"), TEXT("B"), TEXT("2"), File);
    ASSERT_TRUE(GConfig->Flush(false, File));
    EXPECT_EQ(FTestProject::Read(Project.ConfigFile("DefaultTest.ini")), "\xEF\xBB\xBF[S]\r\nA=1\r\nB=2\r\n");
    // The file is replaced through a temporary one, which must not stay behind.
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(Project.Root / "Config"),
                            std::filesystem::directory_iterator()),
              1);
}
