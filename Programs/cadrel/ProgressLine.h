#pragma once

#include "LipsyncJobs.h"

#include <string>

class FHostLogCapture;

// What a user sees while a command works. On a terminal one line, redrawn in
// place, shows where the batch stands under the lines of the files already done;
// elsewhere (a pipe, a log file) only those lines appear, one per file.
class FProgressLine
{
public:
    explicit FProgressLine(const FHostLogCapture& InLog);

    void Update(const FBatchProgress& Progress);
    // A finished file's line, on standard output.
    void PrintResult(const std::string& Line);
    // A problem's line, on standard error.
    void PrintError(const std::string& Line);
    // Takes the progress line away; call before the last lines of a command.
    void Clear();

private:
    const FHostLogCapture& Log;
    bool bTerminal = false;
    bool bShown = false;
    double LastDraw = 0.0;
};
