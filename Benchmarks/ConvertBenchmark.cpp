// `cadrel convert` of a ten-minute Audio2Face export, timed as a whole process,
// against simdjson's DOM parser loading the NAME.json that convert wrote. The
// export is the server's own: the engine's frames for the demo speech, repeated to
// ten minutes at 60 fps, written by the server's export writer. Each iteration runs
// the program and then the baseline, so that a busy machine slows both alike; the
// "x_simdjson" counter is the program's time over the baseline's (at most 3 is the
// target), and its median, minimum and maximum over the repetitions are printed;
// "x_simdjson_cpu" is the same ratio of processor times (the child's user and system time).
//
// "Writers" times the JSON and CSV writers alone, in this process, on the same
// animation, against simdjson's DOM parser reading the written JSON from memory:
// what writing costs once starting a program, reading the export and the file
// system are set aside.
#include "AnimationCsv.h"
#include "AnimationJson.h"
#include "AnswerWriter.h"
#include "Audio2FaceExport.h"
#include "CadrelJson.h"
#include "FaceEngine.h"
#include "RegularFile.h"
#include "WavFile.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <algorithm>
#include <chrono>
#include <fcntl.h>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <spawn.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <vector>

extern char** environ;

namespace
{
constexpr int Fps = 60;
constexpr std::size_t TenMinutesOfFrames = 10 * 60 * Fps;

std::vector<LipsyncEngine::FFaceFrame> TenMinutesOfFaces()
{
    FWavFile Wav;
    std::string Error;
    if (!ReadWavFile(CADREL_DEMO_SPEECH, Wav, Error))
    {
        throw std::runtime_error(Error);
    }
    LipsyncEngine::FFaceEngine Engine(LipsyncEngine::FAnimationOptions{});
    const std::vector<LipsyncEngine::FFaceFrame> Speech = Engine.Animate(Wav.Mono, Wav.SampleRate);
    std::vector<LipsyncEngine::FFaceFrame> Frames;
    while (Frames.size() < TenMinutesOfFrames)
    {
        const std::size_t Take = std::min(Speech.size(), TenMinutesOfFrames - Frames.size());
        Frames.insert(Frames.end(), Speech.begin(), Speech.begin() + static_cast<std::ptrdiff_t>(Take));
    }
    return Frames;
}

// A folder of its own holding the export; removed at exit.
class FWorkFolder
{
public:
    FWorkFolder()
    {
        char Template[] = "/tmp/cadrel-convert-bench-XXXXXX";
        if (!mkdtemp(Template))
        {
            throw std::runtime_error("cannot make a folder in /tmp");
        }
        Root = Template;
        const std::vector<LipsyncEngine::FFaceFrame> Frames = TenMinutesOfFaces();
        std::ofstream(Root / "take.json", std::ios::binary)
            << WriteAudio2FaceExport(Frames, Fps, "/World/audio2face/Player", std::nullopt);
    }
    ~FWorkFolder() { std::filesystem::remove_all(Root); }

    std::filesystem::path Root;
};

const FWorkFolder& Folder()
{
    static const FWorkFolder Made;
    return Made;
}

double SecondsSince(std::chrono::steady_clock::time_point Start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
}

// Wall-clock and processor seconds of one run.
struct FTimes
{
    double Wall = -1.0;
    double Processor = 0.0;
};

double Seconds(const timeval& Time)
{
    return static_cast<double>(Time.tv_sec) + 1e-6 * static_cast<double>(Time.tv_usec);
}

double ThreadProcessorSeconds()
{
    timespec Now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &Now);
    return static_cast<double>(Now.tv_sec) + 1e-9 * static_cast<double>(Now.tv_nsec);
}

FTimes RunConvert(const std::string& Format)
{
    const std::string Export = (Folder().Root / "take.json").string();
    const std::string Out = (Folder().Root / "out").string();
    const char* Argv[] = {CADREL_PROGRAM, "convert", Export.c_str(), "--format",
                          Format.c_str(), "--out",   Out.c_str(),    nullptr};
    posix_spawn_file_actions_t Actions;
    posix_spawn_file_actions_init(&Actions);
    posix_spawn_file_actions_addopen(&Actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    const auto Start = std::chrono::steady_clock::now();
    pid_t Child = 0;
    int Status = -1;
    rusage Usage{};
    if (posix_spawn(&Child, CADREL_PROGRAM, &Actions, nullptr, const_cast<char**>(Argv), environ) == 0)
    {
        wait4(Child, &Status, 0, &Usage);
    }
    FTimes Times;
    Times.Wall = SecondsSince(Start);
    Times.Processor = Seconds(Usage.ru_utime) + Seconds(Usage.ru_stime);
    posix_spawn_file_actions_destroy(&Actions);
    return Status == 0 ? Times : FTimes();
}

FTimes LoadWithSimdjson()
{
    static simdjson::dom::parser Parser;
    const double Processor = ThreadProcessorSeconds();
    const auto Start = std::chrono::steady_clock::now();
    simdjson::dom::element Root;
    const bool bRead = !Parser.load((Folder().Root / "out" / "take.json").string()).get(Root);
    FTimes Times;
    Times.Wall = SecondsSince(Start);
    Times.Processor = ThreadProcessorSeconds() - Processor;
    return bRead ? Times : FTimes();
}

void Convert(benchmark::State& State, const std::string& Format)
{
    // The baseline reads the JSON that convert writes, so that file must exist first.
    if (RunConvert("json").Wall < 0.0)
    {
        State.SkipWithError("cadrel convert failed");
        return;
    }
    FTimes Program{0.0, 0.0};
    FTimes Baseline{0.0, 0.0};
    for (auto _ : State)
    {
        const FTimes ProgramTimes = RunConvert(Format);
        const FTimes BaselineTimes = LoadWithSimdjson();
        if (ProgramTimes.Wall < 0.0 || BaselineTimes.Wall < 0.0)
        {
            State.SkipWithError("cadrel convert or simdjson failed");
            return;
        }
        Program.Wall += ProgramTimes.Wall;
        Program.Processor += ProgramTimes.Processor;
        Baseline.Wall += BaselineTimes.Wall;
        Baseline.Processor += BaselineTimes.Processor;
        State.SetIterationTime(ProgramTimes.Wall);
    }
    State.counters["x_simdjson"] = Program.Wall / Baseline.Wall;
    // On a machine shared with other work the processor times are the steadier figure.
    State.counters["x_simdjson_cpu"] = Program.Processor / Baseline.Processor;
    State.counters["simdjson_ms"] = 1e3 * Baseline.Wall / static_cast<double>(State.iterations());
}

// The animation convert writes: the export read back and turned into an answer.
const FCadrelZELResponse& TenMinuteAnimation()
{
    static const FCadrelZELResponse Animation = []
    {
        TArray<uint8> Bytes;
        std::string Error;
        FCadrelAudio2FaceBlendShapeInfo Export;
        FCadrelZELResponse Made;
        if (ReadRegularFile((Folder().Root / "take.json").string(), int64(1) << 30, Bytes, Error) &&
            ReadAudio2FaceExport(Bytes, Export))
        {
            CadrelJson::Audio2FaceBlendShapeToZELResponse(std::move(Export), Made, 1.0);
        }
        return Made;
    }();
    return Animation;
}

std::string WriteAnimation(const FCadrelZELResponse& Animation, const std::string& Format)
{
    return Format == "json" ? AnimationToJson(Animation) : AnimationToCsv(Animation);
}

void Writers(benchmark::State& State, const std::string& Format)
{
    const FCadrelZELResponse& Animation = TenMinuteAnimation();
    if (Animation.Frames.Num() == 0)
    {
        State.SkipWithError("the export could not be read");
        return;
    }
    const simdjson::padded_string Written(AnimationToJson(Animation));
    // Kept warm across runs, as the whole-process baseline's parser is.
    static simdjson::dom::parser Parser;
    double Writing = 0.0;
    double Reading = 0.0;
    for (auto _ : State)
    {
        auto Start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(WriteAnimation(Animation, Format));
        const double Wrote = SecondsSince(Start);
        Start = std::chrono::steady_clock::now();
        simdjson::dom::element Root;
        const bool bRead = !Parser.parse(Written).get(Root);
        Reading += SecondsSince(Start);
        if (!bRead)
        {
            State.SkipWithError("simdjson could not read the written JSON");
            return;
        }
        Writing += Wrote;
        State.SetIterationTime(Wrote);
    }
    State.counters["x_simdjson"] = Writing / Reading;
    State.counters["simdjson_ms"] = 1e3 * Reading / static_cast<double>(State.iterations());
}

double Least(const std::vector<double>& Values)
{
    return *std::min_element(Values.begin(), Values.end());
}

double Most(const std::vector<double>& Values)
{
    return *std::max_element(Values.begin(), Values.end());
}

void Repeated(benchmark::internal::Benchmark* Benchmark)
{
    Benchmark->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->Iterations(3)
        ->Repetitions(7)
        ->ComputeStatistics("min", Least)
        ->ComputeStatistics("max", Most)
        ->DisplayAggregatesOnly(true);
}
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    for (const char* Format : {"json", "csv"})
    {
        Repeated(benchmark::RegisterBenchmark((std::string("Convert/") + Format).c_str(), Convert,
                                              std::string(Format)));
        Repeated(benchmark::RegisterBenchmark((std::string("Writers/") + Format).c_str(), Writers,
                                              std::string(Format)));
    }
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
