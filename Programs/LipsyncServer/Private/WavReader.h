#pragma once

#include "RequestError.h"

#include <string_view>
#include <vector>

// Speech as the engine takes it: mono samples in [-1, 1] at the file's own rate.
struct FAudio
{
    std::vector<float> Samples;
    int SampleRate = 0;

    double Seconds() const { return SampleRate > 0 ? double(Samples.size()) / SampleRate : 0.0; }
};

// Reads a RIFF/WAVE file held in memory: PCM of 8, 16, 24 or 32 bits or IEEE
// float, mono or stereo (averaged to mono), any rate, chunks in any order. Anything
// else, including a file whose chunk sizes claim more bytes than it holds, is a
// 415 naming the "audio" part.
TOrError<FAudio> ReadWav(std::string_view Bytes);
