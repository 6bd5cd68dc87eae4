#pragma once

#include "CoreMinimal.h"

#include <sndfile.h>

#include <span>
#include <string>
#include <vector>

// A sound file held in memory, opened with libsndfile through its virtual I/O:
// either bytes read in place or a file written into a growing buffer. libsndfile
// keeps a pointer to this object, so it never moves.
class FMemorySoundFile
{
public:
    FMemorySoundFile() = default;
    ~FMemorySoundFile();
    FMemorySoundFile(const FMemorySoundFile&) = delete;
    FMemorySoundFile& operator=(const FMemorySoundFile&) = delete;

    // Bytes must outlive this object. OutInfo receives the file's format.
    bool OpenForReading(std::span<const uint8> Bytes, SF_INFO& OutInfo);
    // Info gives the rate, channels and format to write.
    bool OpenForWriting(SF_INFO& Info);

    SNDFILE* Get() const { return Sound; }
    // libsndfile's reason for the last failure to open.
    std::string GetError() const { return sf_strerror(Sound); }

    // Closes the file, so that libsndfile completes the header, and hands over what was written.
    TArray<uint8> Finish();

private:
    friend struct FMemorySoundFileIo;

    std::span<const uint8> Contents() const;

    std::span<const uint8> Source;
    std::vector<uint8> Written;
    bool bWriting = false;
    sf_count_t Position = 0;
    SNDFILE* Sound = nullptr;
};
