#include "WavChunks.h"
#include "WavFile.h"

#include <cstdlib>

// The program's WAV check on hostile bytes, and the stream chunks of whatever it accepts.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    FWavFile Wav;
    std::string Error;
    if (!ReadWavBytes("fuzz.wav", TArray<uint8>(Data, static_cast<int32>(Size)), Wav, Error))
    {
        if (Error.rfind("fuzz.wav: ", 0) != 0 || Error.find('\n') != std::string::npos)
        {
            std::abort();
        }
        return 0;
    }
    if (Wav.Channels < 1 || Wav.SampleRate < 1 || Wav.Frames != int64(Wav.Mono.size()))
    {
        std::abort();
    }
    for (const float Sample : Wav.Mono)
    {
        if (!(Sample >= -1.0f && Sample <= 1.0f))
        {
            std::abort();
        }
    }
    for (const TArray<uint8>& Chunk : CutWavIntoChunks(Wav, 1 + int(Size % 97)))
    {
        if (Chunk.Num() <= 44)
        {
            std::abort();
        }
    }
    return 0;
}
