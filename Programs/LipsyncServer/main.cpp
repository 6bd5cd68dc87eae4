#include "LipsyncServer.h"

#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <pthread.h>

int main(int argc, char** argv)
{
    CLI::App App{
        "cadrel-lipsync-server: answers lipsync requests with animation computed from their speech."};
    FLipsyncServerOptions Options;
    App.add_option("--port", Options.Port, "Port to listen on; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    App.add_option("--bind", Options.Bind, "Address to listen on")->capture_default_str();
    App.add_option("--token", Options.Token,
                   "Access token every lipsync request must carry in Authorization");
    App.add_option("--threads", Options.Threads, "Worker threads (connections served at once)")
        ->check(CLI::Range(1, 4096))
        ->capture_default_str();
    App.add_option("--fps", Options.Fps, "Animation frames per second")
        ->check(CLI::Range(1, 240))
        ->capture_default_str();
    App.add_option("--max-body", Options.MaxBody, "Largest request body in bytes")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    App.add_flag("--quiet", Options.bQuiet, "No access log on standard error");
    CLI11_PARSE(App, argc, argv);

    // Blocked before any thread starts, so every thread inherits the mask and the
    // signals reach only the sigwait below.
    sigset_t Signals;
    sigemptyset(&Signals);
    sigaddset(&Signals, SIGINT);
    sigaddset(&Signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &Signals, nullptr);

    FLipsyncServer Server(Options);
    std::string Error;
    if (!Server.Start(Error))
    {
        std::fprintf(stderr, "cadrel-lipsync-server: %s\n", Error.c_str());
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
