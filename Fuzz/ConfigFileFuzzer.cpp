#include "Misc/ConfigCacheIni.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <unistd.h>

// A settings file either reads whole, and then survives a rewrite with what it
// held, or is left exactly as it was.
namespace
{
const std::string& ScratchPath()
{
    static const std::string Path = "/tmp/orvane-config-fuzz-" + std::to_string(::getpid()) + ".ini";
    return Path;
}

std::string ReadBytes(const std::string& Path)
{
    std::ifstream Stream(Path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(Stream), std::istreambuf_iterator<char>());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    const std::string Bytes(reinterpret_cast<const char*>(Data), Size);
    std::ofstream(ScratchPath(), std::ios::binary | std::ios::trunc) << Bytes;
    const FString File = FString::FromUTF8(ScratchPath());

    FString Before;
    const bool bHadKey = GConfig->GetString(TEXT("S"), TEXT("K"), Before, File);
    const FString Added = TEXT(" added\nvalue\"");
    GConfig->SetString(TEXT("Fuzz"), TEXT("Added"), Added, File);
    if (!GConfig->Flush(true, File))
    {
        if (bHadKey || ReadBytes(ScratchPath()) != Bytes)
        {
            std::abort();
        }
        return 0;
    }
    FString After;
    FString Read;
    if (GConfig->GetString(TEXT("S"), TEXT("K"), After, File) != bHadKey ||
        !After.Equals(Before, ESearchCase::CaseSensitive) ||
        !GConfig->GetString(TEXT("Fuzz"), TEXT("Added"), Read, File) ||
        !Read.Equals(Added, ESearchCase::CaseSensitive))
    {
        std::abort();
    }
    GConfig->Flush(true, File);
    return 0;
}
