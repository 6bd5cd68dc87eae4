#include "WavLayout.h"

#include <limits>
#include <string_view>

namespace
{
constexpr uint64 ChunkHeaderBytes = 8;
constexpr uint64 FormatBytes = 16;

uint32 ReadLittleEndian(std::span<const uint8> Bytes, uint64 Offset, int Count)
{
    uint32 Value = 0;
    for (int Index = 0; Index < Count; ++Index)
    {
        Value |= uint32(Bytes[Offset + uint64(Index)]) << (8 * Index);
    }
    return Value;
}

std::string_view TagAt(std::span<const uint8> Bytes, uint64 Offset)
{
    return std::string_view(reinterpret_cast<const char*>(Bytes.data() + Offset), 4);
}

// "the data chunk", or the tag in quotes when it is not one a reader knows by name.
std::string ChunkName(std::string_view Tag)
{
    if (Tag == "fmt ")
    {
        return "the fmt chunk";
    }
    if (Tag == "data")
    {
        return "the data chunk";
    }
    std::string Printable;
    for (const char Character : Tag)
    {
        Printable += (Character >= 0x20 && Character < 0x7F) ? Character : '?';
    }
    return "the \"" + Printable + "\" chunk";
}

std::string CheckFormat(std::span<const uint8> Bytes, uint64 Body, uint64 Size)
{
    if (Size < FormatBytes)
    {
        return "the fmt chunk is too short: it holds " + std::to_string(Size) + " bytes, a format takes " +
               std::to_string(FormatBytes);
    }
    const uint32 Channels = ReadLittleEndian(Bytes, Body + 2, 2);
    const uint32 Rate = ReadLittleEndian(Bytes, Body + 4, 4);
    if (Channels == 0)
    {
        return "the fmt chunk gives 0 channels";
    }
    if (Rate == 0 || Rate > uint32(std::numeric_limits<int>::max()))
    {
        return "the fmt chunk gives a sample rate of " + std::to_string(Rate) + " Hz";
    }
    return {};
}
} // namespace

bool IsRiffWave(std::span<const uint8> Bytes)
{
    return Bytes.size() >= 12 && TagAt(Bytes, 0) == "RIFF" && TagAt(Bytes, 8) == "WAVE";
}

std::string CheckWavLayout(std::span<const uint8> Bytes)
{
    if (Bytes.empty())
    {
        return "the file is empty";
    }
    if (!IsRiffWave(Bytes))
    {
        return "not a WAV file: it does not begin with a RIFF/WAVE header";
    }
    // The RIFF size is not trusted: writers that stream leave it 0 or stale, and
    // what counts is whether each chunk fits in the bytes that are really there.
    const uint64 End = Bytes.size();
    bool bFormat = false;
    bool bData = false;
    bool bSamples = false;
    uint64 Offset = 12;
    while (!(bFormat && bData) && End - Offset >= ChunkHeaderBytes)
    {
        const std::string_view Tag = TagAt(Bytes, Offset);
        const uint64 Size = ReadLittleEndian(Bytes, Offset + 4, 4);
        const uint64 Body = Offset + ChunkHeaderBytes;
        if (Size > End - Body)
        {
            return ChunkName(Tag) + " is cut short: the header promises " + std::to_string(Size) +
                   " bytes, the file holds " + std::to_string(End - Body);
        }
        if (Tag == "fmt " && !bFormat)
        {
            bFormat = true;
            if (std::string Problem = CheckFormat(Bytes, Body, Size); !Problem.empty())
            {
                return Problem;
            }
        }
        else if (Tag == "data" && !bData)
        {
            bData = true;
            bSamples = Size > 0;
        }
        // Sizes are at most 2^32 - 1 and offsets 64-bit, so this cannot wrap; odd chunks carry a pad byte.
        Offset = Body + Size + (Size & 1);
        if (Offset > End)
        {
            break;
        }
    }
    if (!bFormat)
    {
        return "there is no fmt chunk, so the format of the samples is unknown";
    }
    if (!bData)
    {
        return "there is no data chunk, so there are no samples";
    }
    if (!bSamples)
    {
        return "the data chunk holds no samples";
    }
    return {};
}
