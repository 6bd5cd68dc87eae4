#include "LipsyncCommand.h"

#include "HostLogCapture.h"
#include "LipsyncJobs.h"
#include "ProgressLine.h"
#include "WavFile.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <thread>

namespace
{
std::string Fixed(double Value, int Digits)
{
    char Text[48];
    std::snprintf(Text, sizeof(Text), "%.*f", Digits, Value);
    return Text;
}

double PeakOf(const FCadrelZELResponse& Animation, int32 Column)
{
    double Peak = 0.0;
    for (const FCadrelFaceFrames& Frame : Animation.Frames)
    {
        if (Column < Frame.Blendshapes.Num())
        {
            Peak = std::max(Peak, Frame.Blendshapes[Column]);
        }
    }
    return Peak;
}

std::string DescribeAnimation(const FWavFile& Wav, const FLipsyncResult& Result,
                              const std::vector<std::string>& Paths)
{
    const FCadrelZELResponse& Animation = Result.Animation;
    std::string Line = Wav.Path + ": " + std::to_string(Animation.Frames.Num()) + " frames at " +
                       std::to_string(Animation.FPS) + " fps (" +
                       Fixed(static_cast<double>(Animation.Frames.Num()) / Animation.FPS, 2) + " s)";
    const int32 JawOpen = Animation.BlendShapesNames.Find(FString(TEXT("jawOpen")));
    if (JawOpen != INDEX_NONE)
    {
        Line += ", peak jawOpen " + Fixed(PeakOf(Animation, JawOpen), 2);
    }
    Line += ", answered in " + Fixed(Result.Seconds, 2) + " s";
    for (std::size_t Index = 0; Index < Paths.size(); ++Index)
    {
        Line += (Index ? ", " : " -> ") + Paths[Index];
    }
    return Line;
}

int DefaultJobs()
{
    return static_cast<int>(std::max(1u, std::thread::hardware_concurrency()));
}
} // namespace

FLipsyncCommand::FLipsyncCommand(CLI::App& Parent) : Jobs(DefaultJobs())
{
    Command = Parent.add_subcommand("lipsync", "Animate WAV files through a lipsync server.");
    Command->add_option("files", Files, "WAV files to animate")->required();
    AddTargetOptions(*Command, Target);
    AddAnimationOptions(*Command, Animation);
    AddOutputOptions(*Command, Output);
    Command->add_option("--jobs", Jobs, "Files in flight at once")
        ->check(CLI::Range(1, 256))
        ->capture_default_str();
    Command->add_option("--timeout", TimeoutSeconds, "Seconds to wait for one file's answer")
        ->check(CLI::Range(0.001, 86400.0))
        ->capture_default_str();
    Command->add_flag("--host-log", bHostLog, "Show the host's log lines as they happen");
}

int FLipsyncCommand::Run() const
{
    const double Begin = FPlatformTime::Seconds();
    FHostLogCapture Log(bHostLog);
    FProgressLine Progress(Log);
    int32 Failures = 0;
    const auto Fail = [&](const std::string& Line)
    {
        Progress.PrintError("cadrel: " + Line);
        ++Failures;
    };

    std::string Error;
    if (!PrepareOutputDirectory(Output, Error))
    {
        Fail(Error);
        return 1;
    }
    // Checked before anything is sent: the module sends whatever bytes it is given.
    std::vector<FWavFile> Wavs;
    std::map<std::string, std::string> StemOwners;
    for (const std::string& Path : Files)
    {
        FWavFile Wav;
        if (!ReadWavFile(Path, Wav, Error))
        {
            Fail(Error);
            continue;
        }
        const auto [Owner, bNew] = StemOwners.emplace(OutputStem(Path), Path);
        if (!bNew)
        {
            Fail(Path + ": its outputs would overwrite those of " + Owner->second + "; rename one of them");
            continue;
        }
        Wavs.push_back(std::move(Wav));
    }
    if (Wavs.empty())
    {
        return 1;
    }

    FLipsyncTarget Server;
    if (!Server.Start(Target, Error))
    {
        Fail(Error);
        return 1;
    }
    FLipsyncBatch Batch;
    ApplyAnimationOptions(Animation, Batch.Request);
    Batch.ServerType = Server.GetServerType();
    Batch.Format = Server.GetAnswerFormat();
    Batch.Token = Server.GetToken();
    Batch.Jobs = Jobs;
    Batch.TimeoutSeconds = TimeoutSeconds;

    std::vector<const TArray<uint8>*> Audio;
    for (const FWavFile& Wav : Wavs)
    {
        Audio.push_back(&Wav.Bytes);
    }
    int32 Animated = 0;
    FLipsyncJobs(Batch, Log)
        .Run(
            Audio,
            [&](int32 Index, FLipsyncResult&& Result)
            {
                const FWavFile& Wav = Wavs[Index];
                std::vector<std::string> Paths;
                if (!Result.bSucceeded)
                {
                    return Fail(Wav.Path + ": " + Result.Error);
                }
                if (!WriteAnimationFiles(Output, OutputStem(Wav.Path), Result.Animation, Wav.Mono,
                                         Wav.SampleRate, Paths, Error))
                {
                    return Fail(Error);
                }
                ++Animated;
                Progress.PrintResult(DescribeAnimation(Wav, Result, Paths));
            },
            [&](const FBatchProgress& Now) { Progress.Update(Now); });

    Progress.Clear();
    Progress.PrintResult(std::to_string(Animated) + " of " + std::to_string(Files.size()) +
                         " files animated by " + Server.GetBaseURL() + " in " +
                         Fixed(FPlatformTime::Seconds() - Begin, 2) + " s");
    return Failures == 0 ? 0 : 1;
}
