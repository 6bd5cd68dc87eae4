#pragma once

#include "CadrelServersModule.h"

#include <CLI/CLI.hpp>

#include <string>

// `cadrel view`: the live link's reference receiver and the page that shows its face.
class FViewCommand
{
public:
    explicit FViewCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    int Run() const;

private:
    CLI::App* Command = nullptr;
    FViewOptions Options;
};
