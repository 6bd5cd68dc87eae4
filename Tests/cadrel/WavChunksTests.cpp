#include "WavChunks.h"
#include "WavTestFiles.h"

#include <gtest/gtest.h>

#include <climits>

namespace
{
FWavFile ReadMade(const std::vector<uint8>& Bytes)
{
    FWavFile Wav;
    std::string Error;
    EXPECT_TRUE(ReadWavBytes("source.wav", TArray<uint8>(Bytes.data(), int32(Bytes.size())), Wav, Error))
        << Error;
    return Wav;
}

// A chunk as libsndfile reads it back from disk: its format and its samples.
std::vector<short> ReadBack(const FWavScratch& Scratch, const TArray<uint8>& Chunk, SF_INFO& Info)
{
    const std::string Path = Scratch.Write("chunk.wav", std::vector<uint8>(Chunk.begin(), Chunk.end()));
    Info = SF_INFO{};
    SNDFILE* Sound = sf_open(Path.c_str(), SFM_READ, &Info);
    EXPECT_NE(Sound, nullptr) << sf_strerror(nullptr);
    if (!Sound)
    {
        return {};
    }
    std::vector<short> Samples(std::size_t(Info.frames * Info.channels));
    sf_read_short(Sound, Samples.data(), sf_count_t(Samples.size()));
    sf_close(Sound);
    return Samples;
}
} // namespace

TEST(WavChunksTest, CutsIntoCanonicalFilesThatHoldTheSourceSamples)
{
    FWavScratch Scratch;
    struct FCase
    {
        int Rate;
        int Channels;
        int ChunkMs;
        std::size_t Chunks;
    };
    // A second and ten frames: four full quarters and a short last chunk.
    for (const FCase& Case : {FCase{44100, 2, 250, 5}, FCase{16000, 1, 250, 5}, FCase{8000, 2, 1000, 2}})
    {
        const std::size_t Frames = std::size_t(Case.Rate) + 10;
        std::vector<short> Source(Frames * std::size_t(Case.Channels));
        for (std::size_t Index = 0; Index < Source.size(); ++Index)
        {
            Source[Index] = short(int(Index * 7919 % 65536) - 32768);
        }
        const std::vector<TArray<uint8>> Chunks =
            CutWavIntoChunks(ReadMade(Scratch.MakeWav(Case.Rate, Case.Channels, Source)), Case.ChunkMs);
        ASSERT_EQ(Chunks.size(), Case.Chunks);
        std::vector<short> Joined;
        for (const TArray<uint8>& Chunk : Chunks)
        {
            ASSERT_GT(Chunk.Num(), 44);
            const uint8* const Header = Chunk.GetData();
            EXPECT_EQ(std::string(reinterpret_cast<const char*>(Header) + 36, 4), "data");
            EXPECT_EQ(GetLittleEndian32(Header + 40), uint32(Chunk.Num() - 44));
            EXPECT_EQ(GetLittleEndian32(Header + 28), uint32(Case.Rate * Case.Channels * 2));
            SF_INFO Info;
            const std::vector<short> Samples = ReadBack(Scratch, Chunk, Info);
            EXPECT_EQ(Info.format, SF_FORMAT_WAV | SF_FORMAT_PCM_16);
            EXPECT_EQ(Info.samplerate, Case.Rate);
            EXPECT_EQ(Info.channels, Case.Channels);
            Joined.insert(Joined.end(), Samples.begin(), Samples.end());
        }
        EXPECT_EQ(GetLittleEndian32(Chunks.back().GetData() + 40), uint32(10 * Case.Channels * 2));
        EXPECT_EQ(Joined, Source);
    }
}

TEST(WavChunksTest, SurvivesChunkLengthsOutOfRange)
{
    FWavScratch Scratch;
    const FWavFile Wav = ReadMade(Scratch.MakeWav(16000, 1, std::vector<short>(1600, 5)));
    EXPECT_TRUE(CutWavIntoChunks(Wav, 0).empty());
    EXPECT_TRUE(CutWavIntoChunks(Wav, -250).empty());
    EXPECT_TRUE(CutWavIntoChunks(FWavFile{}, 250).empty());
    ASSERT_EQ(CutWavIntoChunks(Wav, INT_MAX).size(), 1u);
    // Shorter than one frame at this rate: one frame a chunk rather than none.
    EXPECT_EQ(CutWavIntoChunks(ReadMade(Scratch.MakeWav(500, 1, std::vector<short>(3, 5))), 1).size(), 3u);
}
