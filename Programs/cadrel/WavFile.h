#pragma once

#include "CoreMinimal.h"

#include <string>
#include <vector>

// A sound file as it will be sent, with what the program needs to know about it.
struct FWavFile
{
    std::string Path;
    // The WAV file that is sent: the file exactly as it is on disk when it is mono
    // or stereo PCM WAV of 16, 24 or 32 bits or float, else its sound as 16-bit PCM
    // mono WAV.
    TArray<uint8> Bytes;
    int SampleRate = 0;
    int Channels = 0;        // of Bytes
    int64 Frames = 0;        // sample frames
    std::vector<float> Mono; // the channels averaged, -1..1, for the waveform picture
    double Seconds() const;  // 0 when SampleRate is 0
};

// The largest WAV file the program reads: 1 GiB, over an hour and a half of 48 kHz
// 16-bit stereo, far more speech than one lipsync request carries, while the file
// and its decoded mono copy still fit comfortably in memory.
inline constexpr int64 MaxWavFileBytes = int64(1) << 30;

// Reads any sound file libsndfile reads (WAV of any encoding, FLAC, Ogg, AIFF,
// MP3, ...). False with one line in OutError naming the file and what is wrong with it.
bool ReadWavFile(const std::string& Path, FWavFile& OutWav, std::string& OutError);
// The same check on bytes already in memory (Name is used in messages); the fuzzer's entry.
bool ReadWavBytes(const std::string& Name, TArray<uint8> Bytes, FWavFile& OutWav, std::string& OutError);
