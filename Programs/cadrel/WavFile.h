#pragma once

#include "CoreMinimal.h"

#include <string>
#include <vector>

// A WAV file as it will be sent, with what the program needs to know about it.
struct FWavFile
{
    std::string Path;
    TArray<uint8> Bytes; // the file exactly as it is on disk; sent unchanged
    int SampleRate = 0;
    int Channels = 0;
    int64 Frames = 0;        // sample frames
    std::vector<float> Mono; // the channels averaged, -1..1, for the waveform picture
    double Seconds() const;  // 0 when SampleRate is 0
};

// The largest WAV file the program reads: 1 GiB, over an hour and a half of 48 kHz
// 16-bit stereo, far more speech than one lipsync request carries, while the file
// and its decoded mono copy still fit comfortably in memory.
inline constexpr int64 MaxWavFileBytes = int64(1) << 30;

// False with one line in OutError naming the file and what is wrong with it.
bool ReadWavFile(const std::string& Path, FWavFile& OutWav, std::string& OutError);
// The same check on bytes already in memory (Name is used in messages); the fuzzer's entry.
bool ReadWavBytes(const std::string& Name, TArray<uint8> Bytes, FWavFile& OutWav, std::string& OutError);
