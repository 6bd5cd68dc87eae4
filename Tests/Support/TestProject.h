#pragma once

// A scratch project directory for one test (ORVANE_PROJECT_DIR points at it
// while the test runs), and whole files read and written as bytes.

#include "CoreMinimal.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

class FTestProject
{
public:
    FTestProject()
    {
        std::string Template = (std::filesystem::temp_directory_path() / "orvane-project-XXXXXX").string();
        Root = ::mkdtemp(Template.data());
        ::setenv("ORVANE_PROJECT_DIR", Root.c_str(), 1);
    }
    ~FTestProject()
    {
        ::unsetenv("ORVANE_PROJECT_DIR");
        std::error_code Ignored;
        std::filesystem::remove_all(Root, Ignored);
    }

    std::filesystem::path ConfigFile(const std::string& Name) const { return Root / "Config" / Name; }
    static FString ToFString(const std::filesystem::path& Path) { return FString::FromUTF8(Path.string()); }

    static void Write(const std::filesystem::path& Path, const std::string& Bytes)
    {
        std::filesystem::create_directories(Path.parent_path());
        std::ofstream(Path, std::ios::binary) << Bytes;
    }
    static std::string Read(const std::filesystem::path& Path)
    {
        std::ifstream Stream(Path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(Stream), std::istreambuf_iterator<char>());
    }

    std::filesystem::path Root;
};
