#pragma once

#include "TestProject.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <sys/wait.h>

// One run of the cadrel program as a user starts it: in Folder, which is also the
// project directory, with both output streams kept.
struct FCadrelRun
{
    int ExitCode = -1;
    std::string Out;
    std::string Error;

    bool IsOneLineFailure() const
    {
        return ExitCode != 0 && std::count(Error.begin(), Error.end(), '\n') == 1;
    }
};

inline FCadrelRun RunCadrel(const std::filesystem::path& Folder, const std::string& Arguments)
{
    const std::filesystem::path Out = Folder / ".out.txt";
    const std::filesystem::path Error = Folder / ".error.txt";
    const std::string Command = "cd '" + Folder.string() + "' && ORVANE_PROJECT_DIR='" + Folder.string() +
                                "' '" + CADREL_PROGRAM + "' " + Arguments + " >'" + Out.string() + "' 2>'" +
                                Error.string() + "'";
    const int Status = std::system(Command.c_str());
    FCadrelRun Run{WIFEXITED(Status) ? WEXITSTATUS(Status) : -1, FTestProject::Read(Out),
                   FTestProject::Read(Error)};
    std::filesystem::remove(Out);
    std::filesystem::remove(Error);
    return Run;
}

// A test that runs the program in a scratch project of its own.
class FCadrelProjectTest : public ::testing::Test
{
protected:
    FCadrelRun Cadrel(const std::string& Arguments) const { return RunCadrel(Project.Root, Arguments); }

    FTestProject Project;
};
