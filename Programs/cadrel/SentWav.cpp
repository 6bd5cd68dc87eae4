#include "SentWav.h"

#include "MemorySoundFile.h"

bool IsSentAsItIs(const SF_INFO& Info)
{
    const int Container = Info.format & SF_FORMAT_TYPEMASK;
    const int Encoding = Info.format & SF_FORMAT_SUBMASK;
    const bool bWave = Container == SF_FORMAT_WAV || Container == SF_FORMAT_WAVEX;
    const bool bEncoding = Encoding == SF_FORMAT_PCM_16 || Encoding == SF_FORMAT_PCM_24 ||
                           Encoding == SF_FORMAT_PCM_32 || Encoding == SF_FORMAT_FLOAT;
    return bWave && bEncoding && (Info.channels == 1 || Info.channels == 2);
}

TArray<uint8> PcmWav(std::span<const float> Mono, int SampleRate)
{
    FMemorySoundFile Sound;
    SF_INFO Info{};
    Info.samplerate = SampleRate;
    Info.channels = 1;
    Info.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
    if (!Sound.OpenForWriting(Info) ||
        sf_write_float(Sound.Get(), Mono.data(), sf_count_t(Mono.size())) != sf_count_t(Mono.size()))
    {
        return {};
    }
    return Sound.Finish();
}
