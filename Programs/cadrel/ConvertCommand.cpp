#include "ConvertCommand.h"

#include "Audio2FaceExport.h"
#include "CadrelJson.h"
#include "ConversionHeap.h"
#include "RegularFile.h"
#include "WavFile.h"

#include <cstdio>
#include <filesystem>

namespace
{
// Exports of many minutes run to tens of megabytes; this bounds a mistaken path.
constexpr int64 MaxExportBytes = int64(1) << 30;
// The heap a conversion spans, per byte of export: the export itself, the parser's
// index (four bytes per byte, not all of it used), the weights as doubles, the text
// written, and the gaps between them. Room never touched costs no memory.
constexpr std::uintmax_t HeapPerExportByte = 16;
} // namespace

FConvertCommand::FConvertCommand(CLI::App& Parent)
{
    Command = Parent.add_subcommand(
        "convert", "Turn an Audio2Face blend-shape export into JSON, CSV, SVG and a page that plays it.");
    Command->add_option("export", ExportPath, "The export's JSON file")->required();
    Command->add_option("--audio", AudioPath,
                        "The speech the export animates: the page plays it, the plot draws it");
    AddOutputOptions(*Command, Output);
}

int FConvertCommand::Run() const
{
    std::error_code SizeError;
    const std::uintmax_t ExportBytes = std::filesystem::file_size(ExportPath, SizeError);
    if (!SizeError && ExportBytes <= static_cast<std::uintmax_t>(MaxExportBytes))
    {
        PrepareHeapForConversion(static_cast<std::size_t>(ExportBytes * HeapPerExportByte));
    }
    std::string Error;
    TArray<uint8> Bytes;
    FCadrelAudio2FaceBlendShapeInfo Export;
    if (!ReadRegularFile(ExportPath, MaxExportBytes, Bytes, Error))
    {
        Error = ExportPath + ": " + Error;
    }
    else if (!ReadAudio2FaceExport(Bytes, Export))
    {
        Error = ExportPath + ": not an Audio2Face export (no JSON object with exportFps)";
    }
    else if (Export.ExportFps <= 0 || Export.WeightMat.Num() == 0)
    {
        Error = ExportPath + ": the export has " + std::to_string(Export.WeightMat.Num()) + " frames at " +
                std::to_string(Export.ExportFps) + " fps; nothing to convert";
    }
    FWavFile Audio;
    if (Error.empty() && !AudioPath.empty())
    {
        ReadWavFile(AudioPath, Audio, Error);
    }
    const int32 Frames = Export.WeightMat.Num();
    std::vector<std::string> Paths;
    if (Error.empty() && PrepareOutputDirectory(Output, Error))
    {
        FCadrelZELResponse Animation;
        // Moved, not copied: a long take's weights are most of the program's memory.
        CadrelJson::Audio2FaceBlendShapeToZELResponse(std::move(Export), Animation, 1.0);
        WriteAnimationFiles(Output, OutputStem(ExportPath), Animation, Audio.Mono, Audio.SampleRate, Paths,
                            Error);
    }
    if (!Error.empty())
    {
        std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
        return 1;
    }
    std::string Line = ExportPath + ": " + std::to_string(Frames) + " frames at " +
                       std::to_string(Export.ExportFps) + " fps";
    for (std::size_t Index = 0; Index < Paths.size(); ++Index)
    {
        Line += (Index ? ", " : " -> ") + Paths[Index];
    }
    std::printf("%s\n", Line.c_str());
    return 0;
}
