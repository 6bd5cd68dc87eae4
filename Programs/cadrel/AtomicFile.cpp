#include "AtomicFile.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>

#include <fcntl.h>
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

bool Fail(const std::string& Path, const char* What, int Errno, std::string& OutError)
{
    OutError = Path + ": " + What + ": " + std::strerror(Errno);
    return false;
}
} // namespace

FAtomicFile::~FAtomicFile()
{
    Discard();
}

bool FAtomicFile::Open(const std::string& Path, std::string& OutError)
{
    Discard();
    const mode_t Mode = TargetMode(Path);
    TargetPath = Path;
    TemporaryPath = TemporaryTemplate(Path);
    File = ::mkstemp(TemporaryPath.data());
    if (File < 0)
    {
        TemporaryPath.clear();
        return Fail(Path, "cannot create", errno, OutError);
    }
    Written = 0;
    WriteErrno = ::fchmod(File, Mode) == 0 ? 0 : errno;
    return true;
}

void FAtomicFile::Write(std::string_view Bytes)
{
    if (File < 0 || WriteErrno != 0)
    {
        return;
    }
    if (!WriteAll(File, Bytes))
    {
        WriteErrno = errno;
        return;
    }
    // Starts the disk on these bytes now rather than at the flush; only a hint, so
    // a failure here is left for fsync to report.
    ::sync_file_range(File, Written, static_cast<off_t>(Bytes.size()), SYNC_FILE_RANGE_WRITE);
    Written += static_cast<long long>(Bytes.size());
}

bool FAtomicFile::Commit(std::string& OutError)
{
    if (File < 0)
    {
        return Fail(TargetPath, "cannot write", EBADF, OutError);
    }
    if (WriteErrno == 0 && ::fsync(File) != 0)
    {
        WriteErrno = errno;
    }
    // close() may report a deferred write error, and must not be retried on EINTR.
    const bool bClosed = ::close(File) == 0;
    File = -1;
    if (WriteErrno != 0 || !bClosed)
    {
        Fail(TargetPath, "cannot write", WriteErrno != 0 ? WriteErrno : errno, OutError);
        Discard();
        return false;
    }
    if (::rename(TemporaryPath.c_str(), TargetPath.c_str()) != 0)
    {
        Fail(TargetPath, "cannot replace", errno, OutError);
        Discard();
        return false;
    }
    TemporaryPath.clear();
    return true;
}

void FAtomicFile::Discard()
{
    if (File >= 0)
    {
        ::close(File);
        File = -1;
    }
    if (!TemporaryPath.empty())
    {
        ::unlink(TemporaryPath.c_str());
        TemporaryPath.clear();
    }
}

bool WriteFileAtomically(const std::string& Path, std::string_view Bytes, std::string& OutError)
{
    FAtomicFile File;
    if (!File.Open(Path, OutError))
    {
        return false;
    }
    File.Write(Bytes);
    return File.Commit(OutError);
}
