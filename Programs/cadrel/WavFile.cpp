#include "WavFile.h"

#include "MemorySoundFile.h"
#include "RegularFile.h"
#include "SentWav.h"
#include "WavLayout.h"

#include <algorithm>
#include <cmath>

namespace
{
// Samples decoded per call, whatever the channel count, so memory stays bounded.
constexpr int DecodeBlockSamples = 1 << 16;

// Float files may hold anything; the picture takes -1..1 and no NaN.
float Sanitise(float Sample)
{
    return std::isfinite(Sample) ? std::clamp(Sample, -1.0f, 1.0f) : 0.0f;
}

std::vector<float> DecodeMono(SNDFILE* Sound, const SF_INFO& Info, std::size_t FileBytes)
{
    const int Channels = Info.channels;
    const sf_count_t BlockFrames = std::max(1, DecodeBlockSamples / Channels);
    std::vector<float> Block(std::size_t(BlockFrames) * std::size_t(Channels));
    std::vector<float> Mono;
    // The header's frame count is a hint only; the file's size bounds what it may reserve.
    Mono.reserve(std::size_t(std::clamp<sf_count_t>(Info.frames, 0, sf_count_t(FileBytes))));
    for (sf_count_t Got; (Got = sf_readf_float(Sound, Block.data(), BlockFrames)) > 0;)
    {
        for (sf_count_t Frame = 0; Frame < Got; ++Frame)
        {
            const float* const Samples = Block.data() + std::size_t(Frame) * std::size_t(Channels);
            float Sum = 0.0f;
            for (int Channel = 0; Channel < Channels; ++Channel)
            {
                Sum += Sanitise(Samples[Channel]);
            }
            Mono.push_back(Sum / float(Channels));
        }
    }
    return Mono;
}

// libsndfile's reading of the file; the problem in plain words, or an empty string.
std::string Decode(std::span<const uint8> Bytes, SF_INFO& OutInfo, std::vector<float>& OutMono)
{
    FMemorySoundFile Sound;
    if (!Sound.OpenForReading(Bytes, OutInfo))
    {
        return "libsndfile cannot read it: " + Sound.GetError();
    }
    if (OutInfo.channels < 1 || OutInfo.samplerate < 1)
    {
        return "libsndfile finds no channels or no sample rate in it";
    }
    OutMono = DecodeMono(Sound.Get(), OutInfo, Bytes.size());
    return OutMono.empty() ? "it holds no whole sample frame" : "";
}
} // namespace

double FWavFile::Seconds() const
{
    return SampleRate > 0 ? double(Frames) / double(SampleRate) : 0.0;
}

bool ReadWavFile(const std::string& Path, FWavFile& OutWav, std::string& OutError)
{
    TArray<uint8> Bytes;
    if (!ReadRegularFile(Path, MaxWavFileBytes, Bytes, OutError))
    {
        OutError = Path + ": " + OutError;
        return false;
    }
    return ReadWavBytes(Path, std::move(Bytes), OutWav, OutError);
}

bool ReadWavBytes(const std::string& Name, TArray<uint8> Bytes, FWavFile& OutWav, std::string& OutError)
{
    const auto Refuse = [&](const std::string& Reason)
    {
        OutError = Name + ": " + Reason;
        return false;
    };
    const std::span<const uint8> View(Bytes.GetData(), std::size_t(Bytes.Num()));
    // WAV files get the layout check, whose words are plainer than libsndfile's;
    // any other file is whatever libsndfile makes of it.
    const bool bRiff = IsRiffWave(View);
    if (std::string Problem = bRiff || View.empty() ? CheckWavLayout(View) : ""; !Problem.empty())
    {
        return Refuse(Problem);
    }
    SF_INFO Info;
    std::vector<float> Mono;
    if (std::string Problem = Decode(View, Info, Mono); !Problem.empty())
    {
        return Refuse(bRiff ? Problem : "not a sound file: " + Problem);
    }
    if (!IsSentAsItIs(Info))
    {
        Bytes = PcmWav(Mono, Info.samplerate);
        Info.channels = 1;
        if (Bytes.Num() == 0)
        {
            return Refuse("libsndfile cannot write it as 16-bit PCM WAV");
        }
    }
    OutWav = FWavFile{};
    OutWav.Path = Name;
    OutWav.SampleRate = Info.samplerate;
    OutWav.Channels = Info.channels;
    OutWav.Frames = int64(Mono.size());
    OutWav.Mono = std::move(Mono);
    OutWav.Bytes = std::move(Bytes);
    return true;
}
