#pragma once

#include <httplib.h>

#include <string>

// Requests as the module sends them, for the server benchmarks.
namespace BenchmarkRequests
{
// 16 kHz mono 16-bit speech-like tone: syllables of a voiced tone, 3 a second.
std::string SpeechWav(double Seconds);

// Posts Audio to Path with the module's headers, document and multipart layout.
httplib::Result Post(httplib::Client& Client, const char* Path, const std::string& Audio, int Index = -1,
                     int MainIndex = 0);
} // namespace BenchmarkRequests
