#include "RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <cctype>
#include <limits>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
class FDescriptor
{
public:
    explicit FDescriptor(int InHandle) : Handle(InHandle) {}
    ~FDescriptor()
    {
        if (Handle >= 0)
        {
            ::close(Handle);
        }
    }
    FDescriptor(const FDescriptor&) = delete;
    FDescriptor& operator=(const FDescriptor&) = delete;

    int Get() const { return Handle; }

private:
    int Handle;
};

std::string DescribeErrno(int Error)
{
    if (Error == ENOENT)
    {
        return "no such file";
    }
    std::string Text = std::generic_category().message(Error);
    if (!Text.empty())
    {
        Text[0] = char(std::tolower(static_cast<unsigned char>(Text[0])));
    }
    return "cannot be opened: " + Text;
}

// Reads up to Count bytes, fewer only at the end of the file; -1 on a read error.
int64 ReadFully(int Handle, uint8* Destination, int64 Count)
{
    int64 Done = 0;
    while (Done < Count)
    {
        const ssize_t Got = ::read(Handle, Destination + Done, size_t(Count - Done));
        if (Got < 0 && errno == EINTR)
        {
            continue;
        }
        if (Got < 0)
        {
            return -1;
        }
        if (Got == 0)
        {
            break;
        }
        Done += Got;
    }
    return Done;
}
} // namespace

bool ReadRegularFile(const std::string& Path, int64 MaxBytes, TArray<uint8>& OutBytes, std::string& OutError)
{
    // Non-blocking, so that opening a FIFO does not wait for a writer; fstat then refuses it.
    const FDescriptor File(::open(Path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (File.Get() < 0)
    {
        OutError = DescribeErrno(errno);
        return false;
    }
    struct stat Status = {};
    if (::fstat(File.Get(), &Status) != 0)
    {
        OutError = DescribeErrno(errno);
        return false;
    }
    if (S_ISDIR(Status.st_mode))
    {
        OutError = "is a directory";
        return false;
    }
    if (!S_ISREG(Status.st_mode))
    {
        OutError = "is not a regular file";
        return false;
    }
    const int64 Limit = std::min<int64>(MaxBytes, std::numeric_limits<int32>::max());
    if (Status.st_size > Limit)
    {
        OutError = "the file holds " + std::to_string(Status.st_size) + " bytes, more than the " +
                   std::to_string(Limit) + " this program reads";
        return false;
    }
    // Room behind the bytes lets the JSON readers parse them where they lie instead of copying them.
    constexpr int64 ReaderRoom = 64;
    OutBytes.Reserve(static_cast<int32>(std::min(Status.st_size + ReaderRoom, Limit)));
    OutBytes.SetNum(int32(Status.st_size));
    const int64 Got = ReadFully(File.Get(), OutBytes.GetData(), Status.st_size);
    uint8 Extra = 0;
    const int64 Beyond = Got < 0 ? -1 : ReadFully(File.Get(), &Extra, 1);
    if (Beyond < 0)
    {
        OutError = "cannot be read: " + std::generic_category().message(errno);
        return false;
    }
    if (Got != Status.st_size || Beyond != 0)
    {
        OutError = "the file changed while it was being read";
        return false;
    }
    return true;
}
