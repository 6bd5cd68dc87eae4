#pragma once

#include <string>
#include <vector>

// How a test WAV file is made: a voiced tone whose loudness rises and falls a few
// times a second, like syllables.
struct FWavSpec
{
    int SampleRate = 16000;
    int Channels = 1;
    int Bits = 16;
    bool bFloat = false;
    double Seconds = 1.0;
    // A "LIST" chunk before "fmt " and "data" after it, as some editors write.
    bool bListFirst = false;
    // When not empty, these samples in every channel instead of the tone.
    std::vector<float> Samples = {};
};

std::string MakeWav(const FWavSpec& Spec);
