#include "Misc/ConfigCacheIni.h"

#include "Config/AtomicFile.h"
#include "Config/ConfigFile.h"
#include "Config/ConfigValueText.h"

#include <filesystem>
#include <fstream>
#include <unordered_map>

ORV_DEFINE_LOG_CATEGORY_STATIC(LogConfig, Log, All);

namespace
{
constinit FConfigCacheIni GConfigCache;

// Settings files are small; anything larger is not one, and reading it whole
// would only cost memory.
constexpr SIZE_T MaxFileSize = 16 * 1024 * 1024;

struct FCachedFile
{
    FString Path;
    FConfigFile File;
    bool bUnreadable = false;
    bool bDirty = false;
};

FString ResolvePath(const FString& Filename)
{
    if (Filename.Contains(TEXT("/")))
    {
        return Filename;
    }
    return FPaths::ProjectConfigDir() + Filename;
}

FString Unreadable(const FString& Path, const TCHAR* Why)
{
    return FString::Printf(TEXT("Cannot read %s (%s); the file is ignored and will not be overwritten"),
                           *Path, Why);
}

// Reads Path into Out; a file that does not exist yet is an empty one. Returns the
// line to log when the file cannot be used.
FString LoadFile(const FString& Path, FCachedFile& Out)
{
    std::error_code Error;
    const std::filesystem::file_type Type = std::filesystem::status(Path.ToUTF8(), Error).type();
    if (Type == std::filesystem::file_type::not_found)
    {
        return FString();
    }
    Out.bUnreadable = true;
    if (Error)
    {
        return Unreadable(Path, TEXT("cannot reach it"));
    }
    // Anything but a regular file (a directory, a pipe that would block) is no settings file.
    if (Type != std::filesystem::file_type::regular)
    {
        return Unreadable(Path, TEXT("not a regular file"));
    }
    const std::uintmax_t Size = std::filesystem::file_size(Path.ToUTF8(), Error);
    if (Error || Size > MaxFileSize)
    {
        return Unreadable(Path, Error ? TEXT("cannot get its size") : TEXT("larger than 16 MiB"));
    }
    std::string Bytes(static_cast<SIZE_T>(Size), '\0');
    std::ifstream Stream(Path.ToUTF8(), std::ios::binary);
    if (!Stream.read(Bytes.data(), static_cast<std::streamsize>(Bytes.size())))
    {
        return Unreadable(Path, TEXT("cannot open it"));
    }
    if (const std::optional<FConfigFile::FParseError> ParseError = Out.File.Parse(Bytes))
    {
        return FString::Printf(
            TEXT("Cannot read %s line %d (\"%s\"): %s; the file is ignored and will not be "
                 "overwritten"),
            *Path, ParseError->LineNumber, *ParseError->Excerpt, *ParseError->Reason);
    }
    Out.bUnreadable = false;
    return FString();
}
} // namespace

FConfigCacheIni* GConfig = &GConfigCache;
FString GEngineIni = TEXT("DefaultEngine.ini");

struct FConfigCacheIni::FImpl
{
    std::unordered_map<std::u16string, FCachedFile> Files;

    // The cached file, read on first use; Problem receives the line to log when
    // it cannot be read.
    FCachedFile& Get(const FString& Filename, FString& Problem)
    {
        const FString Path = ResolvePath(Filename);
        const auto Found = Files.find(Path.GetStd());
        if (Found != Files.end())
        {
            return Found->second;
        }
        FCachedFile Loaded;
        Loaded.Path = Path;
        Problem = LoadFile(Path, Loaded);
        return Files.emplace(Path.GetStd(), std::move(Loaded)).first->second;
    }
};

FConfigCacheIni::FImpl& FConfigCacheIni::GetImpl()
{
    if (!Impl)
    {
        Impl = new FImpl();
    }
    return *Impl;
}

template <typename VisitorType>
auto FConfigCacheIni::VisitFile(const FString& Filename, VisitorType&& Visitor)
{
    FString Problem;
    const auto Result = [&]
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        return Visitor(GetImpl().Get(Filename, Problem));
    }();
    // Logged outside the lock: an output device might read settings itself.
    if (!Problem.IsEmpty())
    {
        ORV_LOG(LogConfig, Warning, TEXT("%s"), *Problem);
    }
    return Result;
}

bool FConfigCacheIni::GetString(const FString& Section, const FString& Key, FString& Value,
                                const FString& Filename)
{
    return VisitFile(Filename,
                     [&](const FCachedFile& Cached)
                     {
                         const FString* Found = Cached.File.Find(Section, Key);
                         if (Found)
                         {
                             Value = *Found;
                         }
                         return Found != nullptr;
                     });
}

bool FConfigCacheIni::GetDouble(const FString& Section, const FString& Key, double& Value,
                                const FString& Filename)
{
    FString Text;
    return GetString(Section, Key, Text, Filename) && ConfigValueText::ParseDouble(Text, Value);
}

bool FConfigCacheIni::GetInt64(const FString& Section, const FString& Key, int64& Value,
                               const FString& Filename)
{
    FString Text;
    return GetString(Section, Key, Text, Filename) && ConfigValueText::ParseInt64(Text, Value);
}

void FConfigCacheIni::SetString(const FString& Section, const FString& Key, const FString& Value,
                                const FString& Filename)
{
    const bool bStored = VisitFile(Filename,
                                   [&](FCachedFile& Cached)
                                   {
                                       const FConfigFile::ESetResult Result =
                                           Cached.File.Set(Section, Key, Value);
                                       Cached.bDirty |= Result == FConfigFile::ESetResult::Changed;
                                       return Result != FConfigFile::ESetResult::Unrepresentable;
                                   });
    if (!bStored)
    {
        ORV_LOG(LogConfig, Warning,
                TEXT("Cannot store key \"%s\" of section \"%s\" in %s: an ini file cannot hold that name"),
                *Key, *Section, *Filename);
    }
}

void FConfigCacheIni::SetDouble(const FString& Section, const FString& Key, double Value,
                                const FString& Filename)
{
    SetString(Section, Key, ConfigValueText::FormatDouble(Value), Filename);
}

void FConfigCacheIni::SetInt64(const FString& Section, const FString& Key, int64 Value,
                               const FString& Filename)
{
    SetString(Section, Key, ConfigValueText::FormatInt64(Value), Filename);
}

bool FConfigCacheIni::Flush(bool bRemoveFromCache, const FString& Filename)
{
    FString Failure;
    FString Path;
    const bool bSaved = VisitFile(Filename,
                                  [&](FCachedFile& Cached)
                                  {
                                      Path = Cached.Path;
                                      if (Cached.bUnreadable)
                                      {
                                          return false;
                                      }
                                      if (Cached.bDirty &&
                                          !AtomicFile::Write(Path.ToUTF8(), Cached.File.Serialize(), Failure))
                                      {
                                          return false;
                                      }
                                      Cached.bDirty = false;
                                      return true;
                                  });
    if (bRemoveFromCache)
    {
        std::lock_guard<std::mutex> Lock(Mutex);
        GetImpl().Files.erase(Path.GetStd());
    }
    if (!Failure.IsEmpty())
    {
        ORV_LOG(LogConfig, Error, TEXT("Cannot save %s: %s"), *Path, *Failure);
    }
    return bSaved;
}
