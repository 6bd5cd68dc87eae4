#include "ConvertCommand.h"

#include "CadrelJson.h"
#include "RegularFile.h"
#include "WavFile.h"

#include <cstdio>

namespace
{
// Exports of many minutes run to tens of megabytes; this bounds a mistaken path.
constexpr int64 MaxExportBytes = int64(1) << 30;
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
    std::string Error;
    TArray<uint8> Bytes;
    FCadrelAudio2FaceBlendShapeInfo Export;
    if (!ReadRegularFile(ExportPath, MaxExportBytes, Bytes, Error))
    {
        Error = ExportPath + ": " + Error;
    }
    else
    {
        CadrelJson::StringToAudio2FaceResponse(Bytes, Export);
        // The reader leaves a text it cannot read as it found the record.
        if (Export.ExportFps == FCadrelAudio2FaceBlendShapeInfo().ExportFps)
        {
            Error = ExportPath + ": not an Audio2Face export (no JSON object with exportFps)";
        }
        else if (Export.ExportFps <= 0 || Export.WeightMat.Num() == 0)
        {
            Error = ExportPath + ": the export has " + std::to_string(Export.WeightMat.Num()) +
                    " frames at " + std::to_string(Export.ExportFps) + " fps; nothing to convert";
        }
    }
    FWavFile Audio;
    if (Error.empty() && !AudioPath.empty())
    {
        ReadWavFile(AudioPath, Audio, Error);
    }
    std::vector<std::string> Paths;
    if (Error.empty() && PrepareOutputDirectory(Output, Error))
    {
        FCadrelZELResponse Animation;
        CadrelJson::Audio2FaceBlendShapeToZELResponse(Export, Animation, 1.0);
        WriteAnimationFiles(Output, OutputStem(ExportPath), Animation, Audio.Mono, Audio.SampleRate, Paths,
                            Error);
    }
    if (!Error.empty())
    {
        std::fprintf(stderr, "cadrel: %s\n", Error.c_str());
        return 1;
    }
    std::string Line = ExportPath + ": " + std::to_string(Export.WeightMat.Num()) + " frames at " +
                       std::to_string(Export.ExportFps) + " fps";
    for (std::size_t Index = 0; Index < Paths.size(); ++Index)
    {
        Line += (Index ? ", " : " -> ") + Paths[Index];
    }
    std::printf("%s\n", Line.c_str());
    return 0;
}
