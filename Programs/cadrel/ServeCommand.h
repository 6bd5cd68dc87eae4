#pragma once

#include "LipsyncServer.h"

#include <CLI/CLI.hpp>

// `cadrel serve`: the reference lipsync server in the foreground, as
// cadrel-lipsync-server runs it.
class FServeCommand
{
public:
    explicit FServeCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    int Run() const;

private:
    CLI::App* Command = nullptr;
    FLipsyncServerOptions Options;
};
