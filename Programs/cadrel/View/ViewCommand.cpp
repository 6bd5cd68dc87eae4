#include "ViewCommand.h"

#include "LiveStreamBuffer.h"
#include "VelkReceiver.h"
#include "ViewPageServer.h"

#include <csignal>
#include <cstdio>
#include <pthread.h>

namespace
{
// A page bound to this machine only takes the live link from this machine only, too.
bool IsLoopbackAddress(const std::string& Address)
{
    return Address == "localhost" || Address == "::1" || Address.rfind("127.", 0) == 0;
}
} // namespace

FViewCommand::FViewCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "view",
        "Receive the server's live link and show the talking face in a browser page until interrupted; "
        "the page's URL is the first line printed, the ports the second.");
    Command->add_option("--web-port", WebPort, "Port of the page; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command->add_option("--velk-port", VelkPort, "UDP port for VMC frames; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command->add_option("--audio-port", AudioPort, "UDP port for the stream's audio; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command
        ->add_option(
            "--bind", Bind,
            "Address the page listens on; bound to this machine, the UDP ports also take only its datagrams")
        ->capture_default_str();
}

int FViewCommand::Run() const
{
    // Blocked before any thread starts, so that every thread inherits the mask and the
    // signals reach only the sigwait below.
    sigset_t Signals;
    sigemptyset(&Signals);
    sigaddset(&Signals, SIGINT);
    sigaddset(&Signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &Signals, nullptr);

    FLiveStreamBuffer Buffer;
    FVelkReceiver Receiver(Buffer);
    FViewPageServer Page(Buffer);
    std::string Error;
    if (!Receiver.Start(VelkPort, AudioPort, IsLoopbackAddress(Bind), Error) ||
        !Page.Start(Bind, WebPort, Error))
    {
        std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
        return 1;
    }
    std::printf("%s\n", Page.Url().c_str());
    std::printf("velk port %d, audio port %d\n", Receiver.VelkPort(), Receiver.AudioPort());
    std::fflush(stdout);

    int Signal = 0;
    sigwait(&Signals, &Signal);
    Page.Stop();
    Receiver.Stop();
    return 0;
}
