#include "OutputFiles.h"

#include "AnimationCsv.h"
#include "AnimationHtml.h"
#include "AnimationJson.h"
#include "AnimationSvg.h"
#include "AtomicFile.h"

#include <filesystem>
#include <sstream>

namespace
{
constexpr const char* KnownFormats[] = {"json", "csv", "svg", "html"};

std::vector<std::string> SplitFormats(const std::string& List)
{
    std::vector<std::string> Formats;
    std::stringstream Stream(List);
    for (std::string Format; std::getline(Stream, Format, ',');)
    {
        Formats.push_back(Format);
    }
    return Formats;
}

std::string CheckFormats(const std::string& List)
{
    const std::vector<std::string> Formats = SplitFormats(List);
    if (Formats.empty())
    {
        return "no format given; choose from json, csv, svg, html";
    }
    for (const std::string& Format : Formats)
    {
        if (std::find(std::begin(KnownFormats), std::end(KnownFormats), Format) == std::end(KnownFormats))
        {
            return "unknown format \"" + Format + "\"; choose from json, csv, svg, html";
        }
    }
    return {};
}

// The tables go to the file as they are written, a chunk at a time.
constexpr SIZE_T TableChunkBytes = SIZE_T{1} << 20;

bool WriteAnimationFile(const std::string& Path, const std::string& Format, const std::string& Stem,
                        const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                        std::string& OutError)
{
    if (Format == "html" || Format == "svg")
    {
        const std::string Page = Format == "html" ? AnimationToHtml(Animation, Mono, SampleRate, Stem)
                                                  : AnimationToSvg(Animation, Mono, SampleRate, Stem);
        return WriteFileAtomically(Path, Page, OutError);
    }
    FAtomicFile File;
    if (!File.Open(Path, OutError))
    {
        return false;
    }
    FTextOutput Out(TableChunkBytes, [&File](std::string_view Chunk) { File.Write(Chunk); });
    if (Format == "json")
    {
        WriteAnimationJson(Animation, Out);
    }
    else
    {
        WriteAnimationCsv(Animation, Out);
    }
    Out.Flush();
    return File.Commit(OutError);
}
} // namespace

void AddOutputOptions(CLI::App& Command, FOutputOptions& Options)
{
    Command.add_option("--out", Options.Directory, "Folder for the output files; made when missing")
        ->capture_default_str();
    Command.add_option("--format", Options.Formats, "Files to write, comma-separated: json, csv, svg, html")
        ->check(CLI::Validator(CheckFormats, "FORMATS"))
        ->capture_default_str();
}

bool PrepareOutputDirectory(const FOutputOptions& Options, std::string& OutError)
{
    std::error_code Error;
    const std::filesystem::path Directory(Options.Directory);
    if (std::filesystem::is_directory(Directory, Error))
    {
        return true;
    }
    if (std::filesystem::exists(Directory, Error))
    {
        OutError = Options.Directory + ": not a folder; --out needs a folder";
        return false;
    }
    if (!std::filesystem::create_directories(Directory, Error) && Error)
    {
        OutError = Options.Directory + ": cannot make the output folder: " + Error.message();
        return false;
    }
    return true;
}

std::string OutputStem(const std::string& InputPath)
{
    return std::filesystem::path(InputPath).stem().string();
}

bool WriteAnimationFiles(const FOutputOptions& Options, const std::string& Stem,
                         const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                         std::vector<std::string>& OutPaths, std::string& OutError)
{
    for (const std::string& Format : SplitFormats(Options.Formats))
    {
        const std::string Path = (std::filesystem::path(Options.Directory) / (Stem + "." + Format)).string();
        if (!WriteAnimationFile(Path, Format, Stem, Animation, Mono, SampleRate, OutError))
        {
            return false;
        }
        OutPaths.push_back(Path);
    }
    return true;
}
