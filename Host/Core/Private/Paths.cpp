#include "Misc/Paths.h"

#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace
{
FString WithTrailingSlash(FString Dir)
{
    if (Dir.IsEmpty() || (!Dir.EndsWith(TEXT("/")) && !Dir.EndsWith(TEXT("\\"))))
    {
        Dir.AppendChar(u'/');
    }
    return Dir;
}

int32 LastSeparator(const FString& Path)
{
    for (int32 Index = Path.Len() - 1; Index >= 0; --Index)
    {
        if (Path[Index] == u'/' || Path[Index] == u'\\')
        {
            return Index;
        }
    }
    return INDEX_NONE;
}

std::filesystem::path ToStdPath(const FString& Path)
{
    return std::filesystem::path(Path.ToUTF8());
}
} // namespace

FString FPaths::ProjectDir()
{
    const char* FromEnvironment = std::getenv("ORVANE_PROJECT_DIR");
    if (FromEnvironment && *FromEnvironment)
    {
        return WithTrailingSlash(FString::FromUTF8(FromEnvironment));
    }
    std::error_code Error;
    const std::filesystem::path Current = std::filesystem::current_path(Error);
    return WithTrailingSlash(Error ? FString(TEXT(".")) : FString::FromUTF8(Current.string()));
}

FString FPaths::ProjectConfigDir()
{
    return ProjectDir() + TEXT("Config/");
}

FString FPaths::GetPath(const FString& FilePath)
{
    const int32 Separator = LastSeparator(FilePath);
    return Separator == INDEX_NONE ? FString() : FilePath.Left(Separator);
}

FString FPaths::GetCleanFilename(const FString& FilePath)
{
    return FilePath.Mid(LastSeparator(FilePath) + 1);
}

bool FPaths::FileExists(const FString& FilePath)
{
    std::error_code Error;
    return std::filesystem::is_regular_file(ToStdPath(FilePath), Error);
}

bool FPaths::DirectoryExists(const FString& DirPath)
{
    std::error_code Error;
    return std::filesystem::is_directory(ToStdPath(DirPath), Error);
}
