#pragma once

#include <CLI/CLI.hpp>

#include <string>

// `cadrel settings`: prints the plug-in's settings as the module's start-up left
// them, and where each came from. `cadrel settings set <Key> <Value>` changes one
// and saves it through the settings object, as a property panel would.
class FSettingsCommand
{
public:
    explicit FSettingsCommand(CLI::App& Parent);

    bool WasChosen() const { return Command->parsed(); }
    // The process's exit code: 0, or 1 after one line on standard error.
    int Run() const;

private:
    int Show() const;
    int Set() const;

    CLI::App* Command = nullptr;
    CLI::App* SetCommand = nullptr;
    std::string Key;
    std::string Value;
    bool bHostLog = false;
};
