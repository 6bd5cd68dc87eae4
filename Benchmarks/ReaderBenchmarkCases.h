#pragma once

#include "CadrelBlendShapeType.h"

#include <string>

// The long answers that the reader benchmark reads, and the readers it times.
namespace ReaderBenchmark
{
enum class EDocument
{
    Answer2MB,
    Answer20MB,
    Export2MB,
    Export20MB,
};

struct FCase
{
    const char* Name;
    EDocument Document;
};
inline constexpr FCase Cases[] = {{"Answer2MB", EDocument::Answer2MB},
                                  {"Answer20MB", EDocument::Answer20MB},
                                  {"Export2MB", EDocument::Export2MB},
                                  {"Export20MB", EDocument::Export20MB}};

enum class EReader
{
    FastBytes,
    FastText,
    GeneralText,
};

struct FReaderName
{
    const char* Name;
    EReader Reader;
    // Least throughput against the DOM baseline that the reader must reach.
    double Target;
};
inline constexpr FReaderName Readers[] = {{"FastBytes", EReader::FastBytes, 1.0},
                                          {"FastText", EReader::FastText, 0.95},
                                          {"GeneralText", EReader::GeneralText, 0.0}};

// One document in the three forms a caller may hold it.
struct FInput
{
    explicit FInput(std::string InUtf8);

    std::string Utf8;
    TArray<uint8> Bytes;
    FString Text;
};

// Made on first use and kept, so that making them is never timed.
const FInput& Input(EDocument Document);
bool IsAnswer(EDocument Document);

// One read into Out, as a caller reading one answer does; false when nothing was read.
bool ReadOnce(EReader Reader, const FInput& In, FCadrelZELResponse& Out);
bool ReadOnce(EReader Reader, const FInput& In, FCadrelAudio2FaceBlendShapeInfo& Out);

// Prints the peak memory of one read of each case, each in a process of its own.
int MeasureMemory();
} // namespace ReaderBenchmark
