#pragma once

#include "CoreMinimal.h"
#include "TestProject.h"

#include <sndfile.h>

#include <string>
#include <vector>

// A scratch folder of WAV files written by libsndfile itself, removed afterwards.
class FWavScratch
{
public:
    std::string Path(const std::string& Name) const { return (Project.Root / Name).string(); }

    std::string Write(const std::string& Name, const std::vector<uint8>& Bytes) const
    {
        FTestProject::Write(Path(Name), std::string(Bytes.begin(), Bytes.end()));
        return Path(Name);
    }

    static std::vector<uint8> Read(const std::string& Path)
    {
        const std::string Bytes = FTestProject::Read(Path);
        return std::vector<uint8>(Bytes.begin(), Bytes.end());
    }

    // Interleaved samples written in the given libsndfile encoding or format; the file's bytes.
    template <typename SampleType>
    std::vector<uint8> MakeWav(int Rate, int Channels, const std::vector<SampleType>& Samples,
                               int Encoding = SF_FORMAT_PCM_16) const
    {
        const std::string File = Path("made.wav");
        SF_INFO Info{};
        Info.samplerate = Rate;
        Info.channels = Channels;
        // An encoding alone is a WAV file's; a whole format names its container too.
        Info.format = (Encoding & SF_FORMAT_TYPEMASK) != 0 ? Encoding : SF_FORMAT_WAV | Encoding;
        SNDFILE* Sound = sf_open(File.c_str(), SFM_WRITE, &Info);
        if constexpr (std::is_same_v<SampleType, short>)
        {
            sf_write_short(Sound, Samples.data(), sf_count_t(Samples.size()));
        }
        else
        {
            sf_write_float(Sound, Samples.data(), sf_count_t(Samples.size()));
        }
        sf_close(Sound);
        return Read(File);
    }

private:
    FTestProject Project;
};

inline void PutLittleEndian32(std::vector<uint8>& Bytes, std::size_t Offset, uint32 Value)
{
    for (std::size_t Index = 0; Index < 4; ++Index)
    {
        Bytes[Offset + Index] = uint8(Value >> (8 * Index));
    }
}

inline uint32 GetLittleEndian32(const uint8* Bytes)
{
    return uint32(Bytes[0]) | uint32(Bytes[1]) << 8 | uint32(Bytes[2]) << 16 | uint32(Bytes[3]) << 24;
}
