#pragma once

#include "TestSpeech.h"

#include <string>
#include <vector>

namespace EngineBench
{

// A take written by tools/engine-training/make_corpus.py: PATH.wav (any rate and
// channel count, mixed down to mono here) with PATH.labels beside it, one
// "start end class" line per phone.
struct FTake
{
    std::string Path;
    FTestSpeech Speech;
    // Labels of the classes the mouth is not scored on (class 5 in the file) are left out.
};

// False, with the reason on stderr, when the WAV cannot be read.
bool ReadTake(const std::string& Path, FTake& OutTake);

// The paths listed one per line in a corpus list file.
std::vector<std::string> ReadTakeList(const std::string& ListPath);

} // namespace EngineBench
