#pragma once

#include "AnimationOptions.h"
#include "LipsyncTarget.h"

#include <CLI/CLI.hpp>

#include <string>

// `cadrel stream`: plays a WAV file to a lipsync server as a live stream, chunk by
// chunk through the module's stream queue, and shows each chunk's animation as it
// arrives.
class FStreamCommand
{
public:
    explicit FStreamCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    int Run() const;

private:
    CLI::App* Command = nullptr;
    std::string File;
    FTargetOptions Target;
    FAnimationOptions Animation;
    int ChunkMs = 500;
    double TimeoutSeconds = 120.0;
    bool bHostLog = false;
};
