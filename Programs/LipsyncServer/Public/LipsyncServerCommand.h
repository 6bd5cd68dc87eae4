#pragma once

#include "LipsyncServer.h"

#include <CLI/CLI.hpp>

// The server's flags, for every program that runs it in the foreground.
void AddLipsyncServerOptions(CLI::App& Command, FLipsyncServerOptions& Options);

// Starts the server, prints its base URL as the first line of standard output and
// serves until SIGINT or SIGTERM; requests in flight are answered before it returns.
// Returns the exit code, with a one-line reason on standard error when the server
// cannot start. Call it before any other thread exists, so that every thread
// inherits the blocked signals.
int RunLipsyncServerUntilSignal(const FLipsyncServerOptions& Options, const char* ProgramName);
