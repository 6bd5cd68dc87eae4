#pragma once

#include "CoreMinimal.h"
#include "UObject/ObjectMacros.h"

#include <mutex>

// The host's cache of ini files: "[Section]" headers and "Key=Value" lines.
//
// A file name without a directory names a file in the project's Config/
// directory (FPaths::ProjectConfigDir() at the time of the call); any other name
// is a path. A file is read on its first use and kept; Set… changes only the
// cache, Flush writes one file to disk. Section and key names ignore letter case.
//
// A file with a line that cannot be parsed (a broken section header, a line
// without '=', a control character, invalid UTF-8) is unreadable: nothing is taken
// from it, one line naming the file and the line is logged, and Flush never
// overwrites it.
class COREUOBJECT_API FConfigCacheIni
{
public:
    constexpr FConfigCacheIni() = default;
    FConfigCacheIni(const FConfigCacheIni&) = delete;
    FConfigCacheIni& operator=(const FConfigCacheIni&) = delete;

    // Get… return whether the key was found with a value of the asked type, and
    // leave Value as it was otherwise.
    bool GetString(const FString& Section, const FString& Key, FString& Value, const FString& Filename);
    bool GetDouble(const FString& Section, const FString& Key, double& Value, const FString& Filename);
    bool GetInt64(const FString& Section, const FString& Key, int64& Value, const FString& Filename);

    void SetString(const FString& Section, const FString& Key, const FString& Value, const FString& Filename);
    void SetDouble(const FString& Section, const FString& Key, double Value, const FString& Filename);
    void SetInt64(const FString& Section, const FString& Key, int64 Value, const FString& Filename);

    // Writes Filename to disk if the cache changed it, through a temporary file
    // renamed over the old one, creating the project's Config/ directory when it
    // is missing. Returns whether the file on disk now holds the cached text;
    // false (logged) when it could not be written, and false for an unreadable
    // file. bRemoveFromCache drops the file from the cache afterwards, so that the
    // next use reads it again.
    bool Flush(bool bRemoveFromCache, const FString& Filename);

private:
    struct FImpl;
    FImpl& GetImpl();
    // Runs Visitor on the cached copy of Filename, read on first use, under the lock.
    template <typename VisitorType> auto VisitFile(const FString& Filename, VisitorType&& Visitor);

    std::mutex Mutex;
    // Made on first use and never freed, so that the cache outlives every static
    // destructor that might still read a setting.
    FImpl* Impl = nullptr;
};

// Valid from static initialisation on.
extern COREUOBJECT_API FConfigCacheIni* GConfig;

// The engine configuration: DefaultEngine.ini in the project's Config/ directory.
extern COREUOBJECT_API FString GEngineIni;
