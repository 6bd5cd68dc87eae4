#include "MemorySoundFile.h"

#include <algorithm>
#include <limits>

struct FMemorySoundFileIo
{
    static FMemorySoundFile& Of(void* User) { return *static_cast<FMemorySoundFile*>(User); }

    static sf_count_t Length(void* User) { return sf_count_t(Of(User).Contents().size()); }

    static sf_count_t Seek(sf_count_t Offset, int Whence, void* User)
    {
        FMemorySoundFile& File = Of(User);
        const sf_count_t Size = Length(User);
        const sf_count_t Base = Whence == SEEK_CUR ? File.Position : (Whence == SEEK_END ? Size : 0);
        // A writer may seek past the end to leave room; a reader may not.
        const sf_count_t Limit = File.bWriting ? std::numeric_limits<int32>::max() : Size;
        if (Offset < -Base || Offset > Limit - Base)
        {
            return -1;
        }
        File.Position = Base + Offset;
        return File.Position;
    }

    static sf_count_t Read(void* Destination, sf_count_t Count, void* User)
    {
        FMemorySoundFile& File = Of(User);
        const std::span<const uint8> Bytes = File.Contents();
        const sf_count_t Available = std::max<sf_count_t>(sf_count_t(Bytes.size()) - File.Position, 0);
        const sf_count_t Taken = std::clamp<sf_count_t>(Count, 0, Available);
        if (Taken == 0)
        {
            return 0;
        }
        std::copy_n(Bytes.data() + File.Position, Taken, static_cast<uint8*>(Destination));
        File.Position += Taken;
        return Taken;
    }

    static sf_count_t Write(const void* Source, sf_count_t Count, void* User)
    {
        FMemorySoundFile& File = Of(User);
        if (!File.bWriting || Count < 0 || Count > std::numeric_limits<int32>::max() - File.Position)
        {
            return 0;
        }
        const std::size_t End = std::size_t(File.Position + Count);
        if (End > File.Written.size())
        {
            File.Written.resize(End);
        }
        std::copy_n(static_cast<const uint8*>(Source), Count, File.Written.data() + File.Position);
        File.Position += Count;
        return Count;
    }

    static sf_count_t Tell(void* User) { return Of(User).Position; }
};

namespace
{
SF_VIRTUAL_IO MemoryIo{FMemorySoundFileIo::Length, FMemorySoundFileIo::Seek, FMemorySoundFileIo::Read,
                       FMemorySoundFileIo::Write, FMemorySoundFileIo::Tell};
} // namespace

FMemorySoundFile::~FMemorySoundFile()
{
    if (Sound)
    {
        sf_close(Sound);
    }
}

bool FMemorySoundFile::OpenForReading(std::span<const uint8> Bytes, SF_INFO& OutInfo)
{
    Source = Bytes;
    OutInfo = SF_INFO{};
    Sound = sf_open_virtual(&MemoryIo, SFM_READ, &OutInfo, this);
    return Sound != nullptr;
}

bool FMemorySoundFile::OpenForWriting(SF_INFO& Info)
{
    bWriting = true;
    Sound = sf_open_virtual(&MemoryIo, SFM_WRITE, &Info, this);
    return Sound != nullptr;
}

TArray<uint8> FMemorySoundFile::Finish()
{
    if (Sound)
    {
        sf_close(Sound);
        Sound = nullptr;
    }
    return TArray<uint8>(Written.data(), int32(Written.size()));
}

std::span<const uint8> FMemorySoundFile::Contents() const
{
    return bWriting ? std::span<const uint8>(Written) : Source;
}
