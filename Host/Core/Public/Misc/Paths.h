#pragma once

#include "CoreTypes.h"
#include "Containers/String.h"

struct CORE_API FPaths
{
    // $ORVANE_PROJECT_DIR when set, else the working directory; ends in '/'.
    static FString ProjectDir();
    // ProjectDir()'s Config/ folder, ending in '/'.
    static FString ProjectConfigDir();
    static FString GetPath(const FString& FilePath);
    static FString GetCleanFilename(const FString& FilePath);
    static bool FileExists(const FString& FilePath);
    static bool DirectoryExists(const FString& DirPath);
};
