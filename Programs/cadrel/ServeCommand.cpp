#include "ServeCommand.h"

#include "CadrelServersModule.h"
#include "LipsyncServerCommand.h"

#include <cstdio>

FServeCommand::FServeCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "serve",
        "Run the reference lipsync server until interrupted; its base URL is the first line printed.");
    AddLipsyncServerOptions(*Command, Options);
}

int FServeCommand::Run() const
{
    std::string Error;
    if (ICadrelServersModule* const Servers = LoadCadrelServers(Error))
    {
        return Servers->RunLipsyncServer(Options, "cadrel");
    }
    std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
    return 1;
}
