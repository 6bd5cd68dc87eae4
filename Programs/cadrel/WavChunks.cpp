#include "WavChunks.h"

#include "MemorySoundFile.h"

#include <algorithm>

namespace
{
// Frames copied per call, so memory stays bounded however long a chunk is.
constexpr sf_count_t CopyBlockSamples = 1 << 14;

// Copies up to Frames frames from Source into Chunk; how many were copied, or -1 when writing failed.
sf_count_t CopyFrames(SNDFILE* Source, SNDFILE* Chunk, int Channels, sf_count_t Frames)
{
    const sf_count_t BlockFrames = std::max<sf_count_t>(1, CopyBlockSamples / Channels);
    std::vector<short> Block(std::size_t(BlockFrames) * std::size_t(Channels));
    sf_count_t Copied = 0;
    while (Copied < Frames)
    {
        const sf_count_t Got = sf_readf_short(Source, Block.data(), std::min(BlockFrames, Frames - Copied));
        if (Got <= 0)
        {
            break;
        }
        if (sf_writef_short(Chunk, Block.data(), Got) != Got)
        {
            return -1;
        }
        Copied += Got;
    }
    return Copied;
}
} // namespace

std::vector<TArray<uint8>> CutWavIntoChunks(const FWavFile& Wav, int ChunkMs)
{
    FMemorySoundFile Source;
    SF_INFO Info;
    if (ChunkMs <= 0 ||
        !Source.OpenForReading(std::span<const uint8>(Wav.Bytes.GetData(), std::size_t(Wav.Bytes.Num())),
                               Info) ||
        Info.channels < 1 || Info.samplerate < 1)
    {
        return {};
    }
    // Float samples beyond -1..1 clip rather than wrap around in 16 bits.
    sf_command(Source.Get(), SFC_SET_CLIPPING, nullptr, SF_TRUE);
    const sf_count_t ChunkFrames = std::max<sf_count_t>(1, sf_count_t(Info.samplerate) * ChunkMs / 1000);
    std::vector<TArray<uint8>> Chunks;
    for (;;)
    {
        FMemorySoundFile Chunk;
        SF_INFO Format{};
        Format.samplerate = Info.samplerate;
        Format.channels = Info.channels;
        Format.format = SF_FORMAT_WAV | SF_FORMAT_PCM_16;
        if (!Chunk.OpenForWriting(Format))
        {
            return {};
        }
        const sf_count_t Copied = CopyFrames(Source.Get(), Chunk.Get(), Info.channels, ChunkFrames);
        if (Copied < 0)
        {
            return {};
        }
        if (Copied > 0)
        {
            Chunks.push_back(Chunk.Finish());
        }
        if (Copied < ChunkFrames)
        {
            return Chunks;
        }
    }
}
