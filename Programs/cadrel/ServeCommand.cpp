#include "ServeCommand.h"

#include "LipsyncServerCommand.h"

FServeCommand::FServeCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "serve",
        "Run the reference lipsync server until interrupted; its base URL is the first line printed.");
    AddLipsyncServerOptions(*Command, Options);
}

int FServeCommand::Run() const
{
    return RunLipsyncServerUntilSignal(Options, "cadrel");
}
