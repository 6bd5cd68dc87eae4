#pragma once

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
    int WebPort = 0;
    int VelkPort = 9012;
    int AudioPort = 9013;
    std::string Bind = "127.0.0.1";
};
