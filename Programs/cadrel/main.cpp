#include "ConvertCommand.h"
#include "LipsyncCommand.h"
#include "RequestCommand.h"
#include "ServeCommand.h"
#include "SettingsCommand.h"
#include "StreamCommand.h"
#include "ViewCommand.h"

#include <CLI/CLI.hpp>

int main(int argc, char** argv)
{
    CLI::App App{"cadrel: turns recorded speech into facial animation through a lipsync server."};
    App.require_subcommand(0, 1);
    FLipsyncCommand Lipsync(App);
    FStreamCommand Stream(App);
    FServeCommand Serve(App);
    FConvertCommand Convert(App);
    FRequestCommand Request(App);
    FSettingsCommand Settings(App);
    FViewCommand View(App);
    // Set after the commands are added, so that their own help does not repeat it.
    App.footer("Without a command, cadrel runs `request` with its defaults. Run `cadrel <command> --help` "
               "for a command's options.");

    CLI11_PARSE(App, argc, argv);
    if (Lipsync.WasChosen())
    {
        return Lipsync.Run();
    }
    if (Stream.WasChosen())
    {
        return Stream.Run();
    }
    if (Serve.WasChosen())
    {
        return Serve.Run();
    }
    if (Convert.WasChosen())
    {
        return Convert.Run();
    }
    if (View.WasChosen())
    {
        return View.Run();
    }
    if (Settings.WasChosen())
    {
        return Settings.Run();
    }
    return Request.Run();
}
