#pragma once

#include "CadrelBlendShapeType.h"

#include <httplib.h>

#include <cstdint>
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

// The request document exactly as the module writes it.
std::string RequestDocument(const FCadrelZELRequest& Request = FCadrelZELRequest());

// The multipart body exactly as the module builds it: a line break before the
// first boundary, no Content-Type on the json part, Content-Type before
// Content-Disposition on the audio part.
std::string ModuleBody(const std::string& Json, const std::string& Audio);

// The headers the module sends with a body, "Content-Type" aside (cpp-httplib's
// client takes it separately).
httplib::Headers ModuleHeaders(std::size_t AudioSize, int Index = -1, int MainIndex = 0,
                               bool bStream = false);

inline constexpr const char* ModuleContentType = "multipart/form-data; boundary=ZELBoundary";

// Reads an answer with the module's own readers.
FCadrelZELResponse ReadCloudAnswer(const std::string& Body);
FCadrelAudio2FaceBlendShapeInfo ReadAudio2FaceExport(const std::string& Body);
FCadrelVelkInfo ReadVelkInfo(const std::string& Body);
