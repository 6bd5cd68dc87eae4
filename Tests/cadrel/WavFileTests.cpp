#include "WavFile.h"
#include "MemorySoundFile.h"
#include "WavTestFiles.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <iostream>

#include <sys/stat.h>

namespace
{
// libsndfile's 16-bit mono file: the format at 20..35, the data chunk's tag at 36 and size at 40.
std::vector<uint8> GoodMono(const FWavScratch& Scratch)
{
    return Scratch.MakeWav(16000, 1, std::vector<short>(1000, 1200));
}

std::vector<uint8> Renamed(std::vector<uint8> Bytes, std::size_t Offset, const char* Tag)
{
    std::copy_n(Tag, 4, Bytes.begin() + std::ptrdiff_t(Offset));
    return Bytes;
}

// An odd-sized chunk between the format and the samples, with its pad byte.
std::vector<uint8> WithOddChunk(std::vector<uint8> Bytes)
{
    const std::vector<uint8> Odd = {'o', 'd', 'd', ' ', 3, 0, 0, 0, 'a', 'b', 'c', 0};
    Bytes.insert(Bytes.begin() + 36, Odd.begin(), Odd.end());
    return Bytes;
}

std::vector<uint8> WithSize(std::vector<uint8> Bytes, std::size_t Offset, uint32 Size, std::size_t Keep)
{
    PutLittleEndian32(Bytes, Offset, Size);
    Bytes.resize(std::min(Keep, Bytes.size()));
    return Bytes;
}
} // namespace

TEST(WavFileTest, RefusesEveryBrokenFileNamingItAndTheFault)
{
    FWavScratch Scratch;
    const std::vector<uint8> Good = GoodMono(Scratch);
    ASSERT_EQ(Good.size(), 2044u);
    const auto File = [&](std::vector<uint8> Bytes) { return Scratch.Write("take.wav", Bytes); };
    struct FCase
    {
        std::function<std::string()> MakePath;
        std::string Reason;
    };
    const FCase Cases[] = {
        {[&] { return Scratch.Path("missing.wav"); }, "no such file"},
        {[&] { return Scratch.Path(""); }, "is a directory"},
        {[&]
         {
             ::mkfifo(Scratch.Path("pipe.wav").c_str(), 0600);
             return Scratch.Path("pipe.wav");
         },
         "is not a regular file"},
        {[&] { return File({}); }, "the file is empty"},
        {[&] {
             return File({'h', 'e', 'l', 'l', 'o', '\n'});
         },
         "not a sound file"},
        {[&] { return File(std::vector<uint8>(Good.begin(), Good.begin() + 11)); }, "not a sound file"},
        {[&] { return File(Renamed(Good, 12, "junk")); }, "there is no fmt chunk"},
        {[&] { return File(WithSize(Good, 16, 14, Good.size())); }, "the fmt chunk is too short"},
        {[&] { return File(Renamed(Good, 22, "\0\0\x80\x3e")); }, "the fmt chunk gives 0 channels"},
        {[&] { return File(WithSize(Good, 24, 0, Good.size())); }, "a sample rate of 0 Hz"},
        {[&] { return File(Renamed(Good, 36, "junk")); }, "there is no data chunk"},
        {[&] { return File(WithSize(Good, 40, 0, 44)); }, "the data chunk holds no samples"},
        {[&] { return File(WithSize(Good, 40, 1, 45)); }, "no whole sample frame"},
        {[&] { return File(WithSize(Good, 40, 2000, 44 + 1230)); },
         "the data chunk is cut short: the header promises 2000 bytes, the file holds 1230"},
        {[&] { return File(WithSize(Good, 40, 0xFFFFFFFF, Good.size())); },
         "the header promises 4294967295 bytes, the file holds 2000"},
        {[&] { return File(WithSize(Renamed(Good, 36, "LIST"), 40, 0xFFFFFFFE, Good.size())); },
         "the \"LIST\" chunk is cut short"},
        {[&] { return File(Renamed(Good, 20, "\x34\x12\x01\0")); }, "libsndfile cannot read it: "},
    };
    for (const FCase& Case : Cases)
    {
        const std::string Path = Case.MakePath();
        FWavFile Wav;
        std::string Error;
        EXPECT_FALSE(ReadWavFile(Path, Wav, Error)) << Case.Reason;
        EXPECT_EQ(Error.rfind(Path + ": ", 0), 0u) << Error;
        EXPECT_NE(Error.find(Case.Reason), std::string::npos) << Error;
        EXPECT_EQ(Error.find('\n'), std::string::npos) << Error;
    }
}

// Out-of-range and NaN float samples are WavFileFuzzer's: from its stereo-float seed it
// makes them readily and aborts on any mono sample outside [-1, 1].
TEST(WavFileTest, ReadsMonoStereoAndPaddedFilesAsTheyAre)
{
    FWavScratch Scratch;
    struct FCase
    {
        std::vector<uint8> Bytes;
        int Channels;
        std::vector<float> Mono;
    };
    const FCase Cases[] = {
        {Scratch.MakeWav(16000, 1, std::vector<short>{0, 16384, -32768}), 1, {0.0f, 0.5f, -1.0f}},
        {Scratch.MakeWav(16000, 2, std::vector<short>{16384, -16384, 32767, 32767}),
         2,
         {0.0f, 32767 / 32768.0f}},
        {WithOddChunk(Scratch.MakeWav(16000, 1, std::vector<short>{64, -64})), 1, {1 / 512.0f, -1 / 512.0f}},
    };
    for (const FCase& Case : Cases)
    {
        const std::string Path = Scratch.Write("good.wav", Case.Bytes);
        FWavFile Wav;
        std::string Error;
        ASSERT_TRUE(ReadWavFile(Path, Wav, Error)) << Error;
        EXPECT_EQ(Wav.Path, Path);
        EXPECT_EQ(std::vector<uint8>(Wav.Bytes.begin(), Wav.Bytes.end()), Case.Bytes);
        EXPECT_EQ(Wav.SampleRate, 16000);
        EXPECT_EQ(Wav.Channels, Case.Channels);
        EXPECT_EQ(Wav.Frames, int64(Case.Mono.size()));
        EXPECT_DOUBLE_EQ(Wav.Seconds(), double(Case.Mono.size()) / 16000.0);
        ASSERT_EQ(Wav.Mono.size(), Case.Mono.size());
        for (std::size_t Index = 0; Index < Case.Mono.size(); ++Index)
        {
            EXPECT_NEAR(Wav.Mono[Index], Case.Mono[Index], 1e-6f) << Index;
        }
    }
}

TEST(WavFileTest, OtherSoundIsSentAsSixteenBitMonoPcmWav)
{
    FWavScratch Scratch;
    struct FCase
    {
        const char* Name;
        int Format;
        int Rate;
        int Channels;
    };
    const FCase Cases[] = {
        // One of each kind the conversion treats differently: compressed, companded,
        // many channels at a high rate. libsndfile's own tests cover its other codecs.
        {"Ogg Vorbis", SF_FORMAT_OGG | SF_FORMAT_VORBIS, 22050, 1},
        {"mu-law WAV", SF_FORMAT_WAV | SF_FORMAT_ULAW, 8000, 2},
        {"5.1 WAV at 96 kHz", SF_FORMAT_WAV | SF_FORMAT_PCM_16, 96000, 6},
    };
    for (const FCase& Case : Cases)
    {
        SF_INFO Wanted{};
        Wanted.samplerate = Case.Rate;
        Wanted.channels = Case.Channels;
        Wanted.format = Case.Format;
        if (!sf_format_check(&Wanted))
        {
            std::cout << Case.Name << ": this libsndfile does not write it\n";
            continue;
        }
        // Three quarters of a second of a 220 Hz tone at half scale in every channel.
        std::vector<float> Samples;
        for (int Frame = 0; Frame < Case.Rate * 3 / 4; ++Frame)
        {
            Samples.insert(Samples.end(), std::size_t(Case.Channels),
                           0.5f * float(std::sin(2.0 * 3.14159265 * 220.0 * Frame / Case.Rate)));
        }
        const std::string Path =
            Scratch.Write("sound", Scratch.MakeWav(Case.Rate, Case.Channels, Samples, Case.Format));
        FWavFile Wav;
        std::string Error;
        ASSERT_TRUE(ReadWavFile(Path, Wav, Error)) << Case.Name << ": " << Error;

        FMemorySoundFile Sent;
        SF_INFO Info;
        ASSERT_TRUE(Sent.OpenForReading(
            std::span<const uint8>(Wav.Bytes.GetData(), std::size_t(Wav.Bytes.Num())), Info));
        EXPECT_EQ(Info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16) << Case.Name;
        EXPECT_EQ(Info.channels, 1) << Case.Name;
        EXPECT_EQ(Info.samplerate, Case.Rate) << Case.Name;
        // Lossy codecs add a little padding; the sound keeps its length and loudness.
        EXPECT_NEAR(double(Info.frames) / Case.Rate, 0.75, 0.06) << Case.Name;
        std::vector<float> Mono(std::size_t(Info.frames));
        sf_readf_float(Sent.Get(), Mono.data(), Info.frames);
        double Energy = 0.0;
        for (const float Sample : Mono)
        {
            Energy += double(Sample) * Sample;
        }
        EXPECT_NEAR(std::sqrt(Energy / double(Mono.size())), 0.5 / std::sqrt(2.0), 0.05) << Case.Name;
    }
}
