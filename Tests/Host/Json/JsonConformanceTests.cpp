#include "Serialization/JsonSerializer.h"

#include <gtest/gtest.h>
#include <utf8.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

// Runs the JSONTestSuite parsing corpus: y_ files are valid JSON, n_ files are not,
// i_ files are left to the implementation and only must not crash.
namespace
{
std::string ReadBytes(const std::filesystem::path& Path)
{
    std::ifstream File(Path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(File), std::istreambuf_iterator<char>());
}

// The first character of the document proper, or 0 for a blank one.
char TopLevelOpening(const std::string& Bytes)
{
    const SIZE_T First = Bytes.find_first_not_of(" \t\r\n");
    return First == std::string::npos ? '\0' : Bytes[First];
}

struct FOutcome
{
    bool bUtf8Value = false;
    bool bUtf8Object = false;
    // Only for bytes that are valid UTF-8. Turning other bytes into host text replaces
    // each bad sequence with U+FFFD, which would make a file that is invalid only for
    // its encoding valid JSON; such files are judged through the UTF-8 reader alone.
    bool bHasText = false;
    bool bTextValue = false;
};

FOutcome Deserialize(const std::string& Bytes)
{
    FOutcome Outcome;
    TSharedPtr<FJsonValue> Value;
    TSharedPtr<FJsonObject> Object;
    Outcome.bUtf8Value = FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Bytes), Value);
    Outcome.bUtf8Object = FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Bytes), Object);
    Outcome.bHasText = utf8::is_valid(Bytes.begin(), Bytes.end());
    if (Outcome.bHasText)
    {
        TSharedPtr<FJsonValue> TextValue;
        Outcome.bTextValue =
            FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(FString::FromUTF8(Bytes)), TextValue);
    }
    return Outcome;
}
} // namespace

TEST(JsonConformance, JsonTestSuiteParsingCorpus)
{
    const std::filesystem::path Folder =
        std::filesystem::path(CADREL_SHARED_DIR) / "testdata" / "JSONTestSuite" / "test_parsing";
    if (!std::filesystem::is_directory(Folder))
    {
        GTEST_SKIP() << "JSONTestSuite not found at " << Folder;
    }
    int32 Checked = 0;
    for (const std::filesystem::directory_entry& Entry : std::filesystem::directory_iterator(Folder))
    {
        const std::string Name = Entry.path().filename().string();
        const std::string Bytes = ReadBytes(Entry.path());
        const FOutcome Outcome = Deserialize(Bytes);
        ++Checked;
        if (Name.starts_with("y_"))
        {
            // Valid JSON, but only an object or an array deserialises.
            const char Opening = TopLevelOpening(Bytes);
            const bool bContainer = Opening == '[' || Opening == '{';
            EXPECT_EQ(Outcome.bUtf8Value, bContainer) << Name;
            EXPECT_EQ(Outcome.bUtf8Object, Opening == '{') << Name;
            EXPECT_TRUE(Outcome.bHasText) << Name;
            EXPECT_EQ(Outcome.bTextValue, bContainer) << Name;
        }
        else if (Name.starts_with("n_"))
        {
            EXPECT_FALSE(Outcome.bUtf8Value) << Name;
            EXPECT_FALSE(Outcome.bUtf8Object) << Name;
            EXPECT_FALSE(Outcome.bTextValue) << Name;
        }
    }
    EXPECT_GT(Checked, 300);
}
