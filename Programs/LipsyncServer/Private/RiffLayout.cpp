#include "RiffLayout.h"

#include <cstdint>

namespace
{
constexpr std::size_t ChunkHeaderSize = 8;

std::uint32_t ReadLittleEndian32(std::string_view Bytes, std::size_t Offset)
{
    std::uint32_t Value = 0;
    for (std::size_t Index = 0; Index < 4; ++Index)
    {
        Value |= std::uint32_t(static_cast<unsigned char>(Bytes[Offset + Index])) << (8 * Index);
    }
    return Value;
}

std::string Printable(std::string_view Id)
{
    std::string Text;
    for (const char Character : Id)
    {
        Text += (Character >= 0x20 && Character < 0x7F) ? Character : '?';
    }
    return Text;
}
} // namespace

std::string CheckRiffLayout(std::string_view Bytes)
{
    if (Bytes.size() < 12 || Bytes.substr(0, 4) != "RIFF" || Bytes.substr(8, 4) != "WAVE")
    {
        return "not a RIFF/WAVE file";
    }
    const std::uint64_t RiffSize = ReadLittleEndian32(Bytes, 4);
    if (RiffSize < 4 || ChunkHeaderSize + RiffSize > Bytes.size())
    {
        return "the RIFF header claims " + std::to_string(RiffSize) + " bytes, the part holds " +
               std::to_string(Bytes.size() - ChunkHeaderSize);
    }
    const std::size_t End = ChunkHeaderSize + RiffSize;
    bool bFormat = false;
    bool bData = false;
    std::size_t Offset = 12;
    while (End - Offset >= ChunkHeaderSize)
    {
        const std::string_view Id = Bytes.substr(Offset, 4);
        const std::uint64_t Size = ReadLittleEndian32(Bytes, Offset + 4);
        if (Size > End - Offset - ChunkHeaderSize)
        {
            return "chunk \"" + Printable(Id) + "\" claims " + std::to_string(Size) + " bytes, " +
                   std::to_string(End - Offset - ChunkHeaderSize) + " remain";
        }
        bFormat = bFormat || Id == "fmt ";
        bData = bData || Id == "data";
        // Odd chunks are padded to even length; a writer may leave out the last pad.
        const std::size_t Next = Offset + ChunkHeaderSize + Size + (Size & 1);
        Offset = Next < End ? Next : End;
    }
    if (!bFormat || !bData)
    {
        return bFormat ? "no \"data\" chunk" : "no \"fmt \" chunk";
    }
    return {};
}
