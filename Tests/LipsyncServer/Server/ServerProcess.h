#pragma once

#include <string>
#include <sys/types.h>
#include <vector>

// The server binary run as a child process: started with its arguments, its first
// line of standard output read as the base URL, stopped with SIGTERM.
class FServerProcess
{
public:
    FServerProcess(const std::string& Program, const std::vector<std::string>& Arguments);
    ~FServerProcess();
    FServerProcess(const FServerProcess&) = delete;
    FServerProcess& operator=(const FServerProcess&) = delete;

    // Empty when the process ended or printed nothing within a few seconds.
    const std::string& BaseUrl() const { return Url; }

    // Sends SIGTERM and waits; the exit status as waitpid reports it.
    int Stop();
    // Resident memory in kilobytes (VmRSS), or -1; the load benchmark watches it.
    long ResidentKilobytes() const;

private:
    pid_t Child = -1;
    std::string Url;
};
