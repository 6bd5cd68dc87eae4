#include "Config/AtomicFile.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
namespace fs = std::filesystem;

FString Describe(const char* What, const fs::path& Path, int Error)
{
    return FString::Printf(TEXT("%s %s: %s"), *FString::FromUTF8(What), *FString::FromUTF8(Path.string()),
                           *FString::FromUTF8(std::strerror(Error)));
}

bool WriteAll(int Descriptor, std::string_view Bytes)
{
    while (!Bytes.empty())
    {
        const ssize_t Written = ::write(Descriptor, Bytes.data(), Bytes.size());
        if (Written < 0 && errno == EINTR)
        {
            continue;
        }
        if (Written <= 0)
        {
            return false;
        }
        Bytes.remove_prefix(static_cast<SIZE_T>(Written));
    }
    return true;
}

fs::path ResolveLinks(const fs::path& Path)
{
    std::error_code Error;
    if (fs::is_symlink(Path, Error))
    {
        const fs::path Target = fs::weakly_canonical(Path, Error);
        if (!Error)
        {
            return Target;
        }
    }
    return Path;
}

bool EnsureDirectory(const fs::path& Directory, FString& OutError)
{
    if (Directory.empty() || ::mkdir(Directory.c_str(), 0777) == 0 || errno == EEXIST)
    {
        return true;
    }
    OutError = Describe("cannot create directory", Directory, errno);
    return false;
}

fs::path TemporaryPathFor(const fs::path& Target)
{
    static std::atomic<uint32> Counter{0};
    // Built by appending: GCC 12 reports a false -Wrestrict for "." + std::string.
    std::string Name = ".";
    Name += Target.filename().string();
    Name += ".tmp-" + std::to_string(::getpid()) + "-" + std::to_string(Counter.fetch_add(1));
    return Target.parent_path() / Name;
}

// Writes Bytes to a new file at Temporary, with the permissions of Existing when
// given (else as the umask says, as for any new file).
bool WriteTemporary(const fs::path& Temporary, std::string_view Bytes, const struct stat* Existing,
                    FString& OutError)
{
    const int Descriptor = ::open(Temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (Descriptor < 0)
    {
        OutError = Describe("cannot create", Temporary, errno);
        return false;
    }
    const bool bWritten = WriteAll(Descriptor, Bytes) &&
                          (!Existing || ::fchmod(Descriptor, Existing->st_mode & 07777) == 0) &&
                          ::fsync(Descriptor) == 0;
    const int WriteError = errno;
    const bool bClosed = ::close(Descriptor) == 0;
    if (!bWritten || !bClosed)
    {
        OutError = Describe("cannot write", Temporary, bWritten ? errno : WriteError);
        ::unlink(Temporary.c_str());
        return false;
    }
    return true;
}

void SyncDirectory(const fs::path& Directory)
{
    const int Descriptor =
        ::open(Directory.empty() ? "." : Directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (Descriptor >= 0)
    {
        ::fsync(Descriptor);
        ::close(Descriptor);
    }
}
} // namespace

bool AtomicFile::Write(const std::string& Path, std::string_view Bytes, FString& OutError)
{
    const fs::path Target = ResolveLinks(fs::path(Path));
    if (!EnsureDirectory(Target.parent_path(), OutError))
    {
        return false;
    }
    struct stat Existing;
    const bool bExists = ::stat(Target.c_str(), &Existing) == 0;
    const fs::path Temporary = TemporaryPathFor(Target);
    if (!WriteTemporary(Temporary, Bytes, bExists ? &Existing : nullptr, OutError))
    {
        return false;
    }
    if (::rename(Temporary.c_str(), Target.c_str()) != 0)
    {
        OutError = Describe("cannot replace", Target, errno);
        ::unlink(Temporary.c_str());
        return false;
    }
    SyncDirectory(Target.parent_path());
    return true;
}
