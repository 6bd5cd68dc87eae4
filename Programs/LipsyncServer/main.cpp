#include "LipsyncServerCommand.h"

int main(int argc, char** argv)
{
    CLI::App App{
        "cadrel-lipsync-server: answers lipsync requests with animation computed from their speech."};
    FLipsyncServerOptions Options;
    AddLipsyncServerOptions(App, Options);
    CLI11_PARSE(App, argc, argv);
    return RunLipsyncServerUntilSignal(Options, "cadrel-lipsync-server");
}
