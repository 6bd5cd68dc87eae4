#include "WavReader.h"

#include "RiffLayout.h"

#include <sndfile.h>

#include <algorithm>
#include <cmath>
#include <memory>

namespace
{
struct FMemoryFile
{
    std::string_view Bytes;
    sf_count_t Position = 0;
};

sf_count_t Length(void* File)
{
    return sf_count_t(static_cast<FMemoryFile*>(File)->Bytes.size());
}

sf_count_t Seek(sf_count_t Offset, int Whence, void* User)
{
    auto* File = static_cast<FMemoryFile*>(User);
    const sf_count_t Size = sf_count_t(File->Bytes.size());
    const sf_count_t Base = Whence == SEEK_CUR ? File->Position : (Whence == SEEK_END ? Size : 0);
    if (Offset < -Base || Offset > Size - Base)
    {
        return -1;
    }
    File->Position = Base + Offset;
    return File->Position;
}

sf_count_t Read(void* Destination, sf_count_t Count, void* User)
{
    auto* File = static_cast<FMemoryFile*>(User);
    const sf_count_t Available = sf_count_t(File->Bytes.size()) - File->Position;
    const sf_count_t Taken = std::clamp<sf_count_t>(Count, 0, Available);
    std::copy_n(File->Bytes.data() + File->Position, Taken, static_cast<char*>(Destination));
    File->Position += Taken;
    return Taken;
}

sf_count_t Write(const void*, sf_count_t, void*)
{
    return 0;
}

sf_count_t Tell(void* User)
{
    return static_cast<FMemoryFile*>(User)->Position;
}

bool IsAcceptedEncoding(int Format)
{
    const int Container = Format & SF_FORMAT_TYPEMASK;
    const int Encoding = Format & SF_FORMAT_SUBMASK;
    const bool bWave = Container == SF_FORMAT_WAV || Container == SF_FORMAT_WAVEX;
    return bWave &&
           (Encoding == SF_FORMAT_PCM_U8 || Encoding == SF_FORMAT_PCM_16 || Encoding == SF_FORMAT_PCM_24 ||
            Encoding == SF_FORMAT_PCM_32 || Encoding == SF_FORMAT_FLOAT || Encoding == SF_FORMAT_DOUBLE);
}

FRequestError Unsupported(std::string Message)
{
    return MakeError(415, "audio", std::move(Message));
}

// Float files may hold anything; the engine takes [-1, 1] and no NaN.
float Sanitise(float Sample)
{
    return std::isfinite(Sample) ? std::clamp(Sample, -1.0f, 1.0f) : 0.0f;
}
} // namespace

TOrError<FAudio> ReadWav(std::string_view Bytes)
{
    if (std::string Problem = CheckRiffLayout(Bytes); !Problem.empty())
    {
        return Unsupported("the audio is not a readable WAV file: " + Problem);
    }
    SF_VIRTUAL_IO Io{Length, Seek, Read, Write, Tell};
    FMemoryFile File{Bytes};
    SF_INFO Info{};
    std::unique_ptr<SNDFILE, int (*)(SNDFILE*)> Sound(sf_open_virtual(&Io, SFM_READ, &Info, &File), sf_close);
    if (!Sound)
    {
        return Unsupported("the audio is not a WAV file that libsndfile can read");
    }
    if (!IsAcceptedEncoding(Info.format))
    {
        return Unsupported("the audio must be PCM of 8, 16, 24 or 32 bits or IEEE float");
    }
    if (Info.channels < 1 || Info.channels > 2 || Info.samplerate <= 0)
    {
        return Unsupported("the audio must be mono or stereo at a positive sample rate");
    }
    // Every frame takes at least one byte of the file, which bounds the allocation.
    if (Info.frames < 0 || Info.frames > sf_count_t(Bytes.size()))
    {
        return Unsupported("the audio's frame count does not fit its size");
    }
    std::vector<float> Interleaved(std::size_t(Info.frames) * std::size_t(Info.channels));
    const sf_count_t Frames = sf_readf_float(Sound.get(), Interleaved.data(), Info.frames);
    FAudio Audio;
    Audio.SampleRate = Info.samplerate;
    Audio.Samples.resize(std::size_t(std::max<sf_count_t>(Frames, 0)));
    for (std::size_t Frame = 0; Frame < Audio.Samples.size(); ++Frame)
    {
        float Sum = 0.0f;
        for (int Channel = 0; Channel < Info.channels; ++Channel)
        {
            Sum += Sanitise(Interleaved[Frame * std::size_t(Info.channels) + std::size_t(Channel)]);
        }
        Audio.Samples[Frame] = Sum / float(Info.channels);
    }
    return Audio;
}
