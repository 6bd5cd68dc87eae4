#include "LipsyncServerCommand.h"

#include <csignal>
#include <cstdio>
#include <pthread.h>

int RunLipsyncServerUntilSignal(const FLipsyncServerOptions& Options, const char* ProgramName)
{
    // Blocked before the server's threads start, so every thread inherits the mask
    // and the signals reach only the sigwait below.
    sigset_t Signals;
    sigemptyset(&Signals);
    sigaddset(&Signals, SIGINT);
    sigaddset(&Signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &Signals, nullptr);

    FLipsyncServer Server(Options);
    std::string Error;
    if (!Server.Start(Error))
    {
        std::fprintf(stderr, "%s: %s\n", ProgramName, Error.c_str());
        return 1;
    }
    std::printf("%s\n", Server.BaseUrl().c_str());
    std::fflush(stdout);

    int Signal = 0;
    sigwait(&Signals, &Signal);
    Server.Stop();
    Server.Wait();
    return 0;
}
