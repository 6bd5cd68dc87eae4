#pragma once

#include "OutputFiles.h"

#include <CLI/CLI.hpp>

#include <string>

// `cadrel convert`: an Audio2Face blend-shape export into the files `lipsync` writes,
// with the export's sound when the user gives it.
class FConvertCommand
{
public:
    explicit FConvertCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    int Run() const;

private:
    CLI::App* Command = nullptr;
    std::string ExportPath;
    std::string AudioPath; // the page's sound and the plot's waveform; none when empty
    FOutputOptions Output;
};
