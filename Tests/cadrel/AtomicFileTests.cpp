#include "AtomicFile.h"
#include "TestProject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <fstream>

#include <sys/stat.h>

namespace
{
namespace fs = std::filesystem;

std::vector<std::string> Entries(const fs::path& Folder)
{
    std::vector<std::string> Names;
    for (const fs::directory_entry& Entry : fs::directory_iterator(Folder))
    {
        Names.push_back(Entry.path().filename().string());
    }
    std::sort(Names.begin(), Names.end());
    return Names;
}
} // namespace

TEST(AtomicFile, CreatesAndReplacesLeavingOnlyTheTarget)
{
    const FTestProject Project;
    const fs::path Target = Project.Root / "x.json";
    const mode_t Previous = ::umask(027);
    std::string Error;
    ASSERT_TRUE(WriteFileAtomically(Target.string(), "old", Error)) << Error;
    ::umask(Previous);
    EXPECT_EQ(FTestProject::Read(Target), "old");
    EXPECT_EQ(fs::status(Target).permissions(), fs::perms(0640));

    fs::permissions(Target, fs::perms(0604));
    const std::string Large(3 << 20, 'y');
    ASSERT_TRUE(WriteFileAtomically(Target.string(), Large, Error)) << Error;
    EXPECT_EQ(FTestProject::Read(Target), Large);
    EXPECT_EQ(fs::status(Target).permissions(), fs::perms(0604));
    EXPECT_EQ(Entries(Project.Root), std::vector<std::string>{"x.json"});
}

TEST(AtomicFile, FailuresNameThePathAndLeaveNothingBehind)
{
    const FTestProject Project;
    const fs::path& Folder = Project.Root;
    std::ofstream(Folder / "plain") << "a file, not a folder";
    fs::create_directory(Folder / "dir");
    std::ofstream(Folder / "dir" / "kept") << "kept";
    const std::pair<fs::path, std::string> Cases[] = {
        {Folder / "missing" / "x.json", std::string("cannot create: ") + std::strerror(ENOENT)},
        {Folder / "plain" / "x.json", std::string("cannot create: ") + std::strerror(ENOTDIR)},
        {Folder / "dir", "cannot replace: "},
    };
    for (const auto& [Path, Reason] : Cases)
    {
        std::string Error;
        EXPECT_FALSE(WriteFileAtomically(Path.string(), "new", Error)) << Path;
        EXPECT_TRUE(Error.starts_with(Path.string() + ": " + Reason)) << Error;
        EXPECT_EQ(Error.find('\n'), std::string::npos) << Error;
    }
    EXPECT_EQ(Entries(Folder), (std::vector<std::string>{"dir", "plain"}));
    EXPECT_EQ(FTestProject::Read(Folder / "plain"), "a file, not a folder");
    EXPECT_EQ(Entries(Folder / "dir"), std::vector<std::string>{"kept"});
}

TEST(AtomicFile, PiecesMakeTheFileOnlyWhenCommitted)
{
    const FTestProject Project;
    const fs::path Target = Project.Root / "x.csv";
    std::string Error;
    ASSERT_TRUE(WriteFileAtomically(Target.string(), "old", Error)) << Error;
    {
        FAtomicFile Abandoned;
        ASSERT_TRUE(Abandoned.Open(Target.string(), Error)) << Error;
        Abandoned.Write("never");
    }
    EXPECT_EQ(FTestProject::Read(Target), "old");
    EXPECT_EQ(Entries(Project.Root), std::vector<std::string>{"x.csv"});

    FAtomicFile File;
    ASSERT_TRUE(File.Open(Target.string(), Error)) << Error;
    const std::string Large(3 << 20, 'y');
    for (const std::string_view Piece :
         {std::string_view("a,b\r\n"), std::string_view(), std::string_view(Large)})
    {
        File.Write(Piece);
    }
    EXPECT_EQ(FTestProject::Read(Target), "old");
    ASSERT_TRUE(File.Commit(Error)) << Error;
    EXPECT_EQ(FTestProject::Read(Target), "a,b\r\n" + Large);
    EXPECT_EQ(Entries(Project.Root), std::vector<std::string>{"x.csv"});
}
