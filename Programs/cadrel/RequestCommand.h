#pragma once

#include "AnimationOptions.h"
#include "CadrelBlendShapeType.h"

#include <CLI/CLI.hpp>

#include <string>

// `cadrel request`: prints the JSON document that the lipsync server would receive
// for a new request, adjusted by the command's options.
class FRequestCommand
{
public:
    explicit FRequestCommand(CLI::App& Parent);

    // Writes the document and a line feed to standard output; the process's exit code.
    int Run() const;

private:
    FAnimationOptions Animation;
    std::string RigType = "vireth";
    std::string Id;
};
