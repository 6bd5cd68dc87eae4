#pragma once

#include "OutputFiles.h"

#include <CLI/CLI.hpp>

#include <string>

// `cadrel convert`: an Audio2Face blend-shape export into the files `lipsync` writes.
class FConvertCommand
{
public:
    explicit FConvertCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    int Run() const;

private:
    CLI::App* Command = nullptr;
    std::string ExportPath;
    FOutputOptions Output;
};
