#include "ViewCommand.h"

#include "CadrelServersModule.h"

#include <cstdio>

FViewCommand::FViewCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "view",
        "Receive the server's live link and show the talking face in a browser page until interrupted; "
        "the page's URL is the first line printed, the ports the second.");
    Command->add_option("--web-port", Options.WebPort, "Port of the page; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command->add_option("--velk-port", Options.VelkPort, "UDP port for VMC frames; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command
        ->add_option("--audio-port", Options.AudioPort, "UDP port for the stream's audio; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command
        ->add_option(
            "--bind", Options.Bind,
            "Address the page listens on; bound to this machine, the UDP ports also take only its datagrams")
        ->capture_default_str();
}

int FViewCommand::Run() const
{
    std::string Error;
    if (ICadrelServersModule* const Servers = LoadCadrelServers(Error))
    {
        return Servers->RunView(Options);
    }
    std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
    return 1;
}
