#include "ServerProcess.h"

#include <csignal>
#include <fstream>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace
{
// Reads up to the first line feed, giving up after TimeoutMs without output.
std::string ReadFirstLine(int Descriptor, int TimeoutMs)
{
    std::string Line;
    char Character = 0;
    pollfd Poll{Descriptor, POLLIN, 0};
    while (poll(&Poll, 1, TimeoutMs) > 0 && read(Descriptor, &Character, 1) == 1 && Character != '\n')
    {
        Line += Character;
    }
    return Character == '\n' ? Line : std::string();
}
} // namespace

FServerProcess::FServerProcess(const std::string& Program, const std::vector<std::string>& Arguments)
{
    int Pipe[2];
    if (pipe(Pipe) != 0)
    {
        return;
    }
    posix_spawn_file_actions_t Actions;
    posix_spawn_file_actions_init(&Actions);
    posix_spawn_file_actions_adddup2(&Actions, Pipe[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&Actions, Pipe[0]);
    std::vector<std::string> Storage{Program};
    Storage.insert(Storage.end(), Arguments.begin(), Arguments.end());
    std::vector<char*> Argv;
    for (std::string& Argument : Storage)
    {
        Argv.push_back(Argument.data());
    }
    Argv.push_back(nullptr);
    if (posix_spawn(&Child, Program.c_str(), &Actions, nullptr, Argv.data(), environ) != 0)
    {
        Child = -1;
    }
    posix_spawn_file_actions_destroy(&Actions);
    close(Pipe[1]);
    if (Child > 0)
    {
        Url = ReadFirstLine(Pipe[0], 10000);
    }
    close(Pipe[0]);
}

FServerProcess::~FServerProcess()
{
    Stop();
}

int FServerProcess::Stop()
{
    if (Child <= 0)
    {
        return -1;
    }
    kill(Child, SIGTERM);
    int Status = -1;
    waitpid(Child, &Status, 0);
    Child = -1;
    return Status;
}

long FServerProcess::ResidentKilobytes() const
{
    std::ifstream Status("/proc/" + std::to_string(Child) + "/status");
    std::string Key;
    while (Status >> Key)
    {
        if (Key == "VmRSS:")
        {
            long Kilobytes = -1;
            Status >> Kilobytes;
            return Kilobytes;
        }
    }
    return -1;
}
