#pragma once

#include "AnimationOptions.h"
#include "LipsyncTarget.h"
#include "OutputFiles.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

// `cadrel lipsync`: animates WAV files through a lipsync server and writes each
// animation as JSON, CSV, SVG and a page that plays it with the sound.
class FLipsyncCommand
{
public:
    explicit FLipsyncCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    // 0 when every file was animated and written.
    int Run() const;

private:
    CLI::App* Command = nullptr;
    std::vector<std::string> Files;
    FTargetOptions Target;
    FAnimationOptions Animation;
    FOutputOptions Output;
    int Jobs = 1;
    double TimeoutSeconds = 120.0;
    bool bHostLog = false;
};
