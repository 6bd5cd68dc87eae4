#pragma once

#include "CoreMinimal.h"
#include "JSON/FastJsonWorkspace.h"

#include <vector>

// Arrays of short plain numbers are nearly all of a long answer: a frame of weights,
// "0.123456" and the like. The on-demand parser spends about 170 instructions on
// each, one number after another. Read straight from the text, whose bytes
// simdjson's first stage has already validated, one costs about 90, and since
// the numbers share a layout the next one is started before this one is done.
namespace CadrelJson::FastJson
{
class FPlainNumberReader
{
public:
    // Reads within the text that Workspace last padded.
    explicit FPlainNumberReader(const FReadWorkspace& InWorkspace) : Workspace(InWorkspace) {}

    // Reads the array whose '[' is at Open, when it holds only numbers of the form
    // -?(0|[1-9][0-9]*)(.[0-9]+)? with at most 15 digits, separated by commas and
    // JSON whitespace. Appends the numbers to OutNumbers, each exactly as the
    // general path reads it, and returns the position just past the closing ']'.
    // Returns null for an empty array and for anything else, leaving what it
    // appended for the caller to drop: such an array is for the general path to
    // read or to refuse. Reads nothing past the end of the text.
    const char* ReadArray(const char* Open, std::vector<double>& OutNumbers);

    // How many digits start an eight-byte word, remembered for the next word.
    // Numbers in an answer share one layout, so the count is taken from the last
    // word whose bytes that are no digit sit at the same places: the next number's
    // position then waits on a predicted branch rather than on this word's load and
    // arithmetic, and numbers are read side by side instead of one after another.
    struct FDigitRun
    {
        // The top bit of each byte that is no digit.
        uint64 NonDigits = 0;
        int32 Count = 8;
        // What reading that many digits takes: how far they move, and the power
        // of ten that makes room for them.
        int32 Shift = 0;
        uint64 Scale = 100000000;
    };

    // The runs a number may have, each with a layout of its own.
    struct FLayout
    {
        FDigitRun Integer;
        FDigitRun Decimals;
        FDigitRun MoreDecimals;
    };

private:
    const FReadWorkspace& Workspace;
    FLayout LastLayout;
};
} // namespace CadrelJson::FastJson
