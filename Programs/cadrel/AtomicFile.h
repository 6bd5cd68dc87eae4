#pragma once

#include <string>
#include <string_view>

// A file that replaces Path only once all of it is on disk, so that Path holds
// either its old content or all of the new: the bytes go to a hidden temporary
// beside Path, which Commit flushes to disk and renames over it. A new file gets
// the mode any created file gets (0666 less the umask); a file that is replaced
// keeps its permission bits. On failure the temporary is gone, Path is untouched
// and the error is one line naming Path and the system's reason.
//
// Written in pieces, the file is on its way to disk while the rest is still being
// made, and Commit waits only for the last of it.
class FAtomicFile
{
public:
    FAtomicFile() = default;
    // Removes the temporary of a file never committed.
    ~FAtomicFile();
    FAtomicFile(const FAtomicFile&) = delete;
    FAtomicFile& operator=(const FAtomicFile&) = delete;

    bool Open(const std::string& Path, std::string& OutError);
    // Appends. After a failure, later writes do nothing and Commit reports it.
    void Write(std::string_view Bytes);
    bool Commit(std::string& OutError);

private:
    void Discard();

    std::string TargetPath;
    std::string TemporaryPath;
    int File = -1;
    long long Written = 0;
    int WriteErrno = 0;
};

// The whole file at once.
bool WriteFileAtomically(const std::string& Path, std::string_view Bytes, std::string& OutError);
