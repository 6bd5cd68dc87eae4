#include "AtomicFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace
{
// umask() can only be read by setting it, which would race with threads creating
// files meanwhile, so the kernel's report is preferred and the swap is the fallback.
mode_t ProcessUmask()
{
    static const mode_t Mask = []
    {
        std::ifstream Status("/proc/self/status");
        std::string Line;
        while (std::getline(Status, Line))
        {
            if (Line.rfind("Umask:", 0) == 0)
            {
                return static_cast<mode_t>(std::strtoul(Line.c_str() + 6, nullptr, 8) & 0777);
            }
        }
        const mode_t Previous = ::umask(022);
        ::umask(Previous);
        return Previous;
    }();
    return Mask;
}

mode_t TargetMode(const std::string& Path)
{
    struct stat Existing;
    if (::stat(Path.c_str(), &Existing) == 0 && S_ISREG(Existing.st_mode))
    {
        return Existing.st_mode & 07777;
    }
    return 0666 & ~ProcessUmask();
}

std::string TemporaryTemplate(const std::string& Path)
{
    const std::size_t Slash = Path.rfind('/');
    const std::string Folder = Slash == std::string::npos ? std::string() : Path.substr(0, Slash + 1);
    const std::string Name = Slash == std::string::npos ? Path : Path.substr(Slash + 1);
    return Folder + "." + Name + ".XXXXXX";
}

bool WriteAll(int File, std::string_view Bytes)
{
    while (!Bytes.empty())
    {
        const ssize_t Written = ::write(File, Bytes.data(), Bytes.size());
        if (Written < 0 && errno == EINTR)
        {
            continue;
        }
        if (Written <= 0)
        {
            // A zero-byte write of a non-empty buffer has no errno of its own.
            errno = Written == 0 ? EIO : errno;
            return false;
        }
        Bytes.remove_prefix(static_cast<std::size_t>(Written));
    }
    return true;
}

bool Fail(const std::string& Path, const char* What, std::string& OutError)
{
    OutError = Path + ": " + What + ": " + std::strerror(errno);
    return false;
}
} // namespace

bool WriteFileAtomically(const std::string& Path, std::string_view Bytes, std::string& OutError)
{
    const mode_t Mode = TargetMode(Path);
    std::string Temporary = TemporaryTemplate(Path);
    const int File = ::mkstemp(Temporary.data());
    if (File < 0)
    {
        return Fail(Path, "cannot create", OutError);
    }

    const bool bWritten = ::fchmod(File, Mode) == 0 && WriteAll(File, Bytes) && ::fsync(File) == 0;
    const int WriteErrno = errno;
    // close() may report a deferred write error, and must not be retried on EINTR.
    const bool bClosed = ::close(File) == 0;
    if (!bWritten || !bClosed)
    {
        errno = bWritten ? errno : WriteErrno;
        Fail(Path, "cannot write", OutError);
        ::unlink(Temporary.c_str());
        return false;
    }
    if (::rename(Temporary.c_str(), Path.c_str()) != 0)
    {
        Fail(Path, "cannot replace", OutError);
        ::unlink(Temporary.c_str());
        return false;
    }
    return true;
}
