// The face engine against one minute of 16 kHz speech: real-time factor (seconds
// of audio per second of work), and the ratio to a plain pass that only computes
// the 10 ms frame energies of the same minute, measured in the same run.
#include "Corpus.h"
#include "FaceEngine.h"
#include "Resampler.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <map>
#include <string>

namespace
{
using namespace EngineBench;
constexpr double MinuteSeconds = 60.0;

const std::vector<float>& Minute16k()
{
    static const std::vector<float> Samples = []
    {
        const FTestSpeech Speech = SpeakSentences(TuningVoices().front(), TuningSentences());
        std::vector<float> Out;
        LipsyncEngine::FResampler Resampler;
        const auto Wanted = static_cast<std::size_t>(MinuteSeconds * LipsyncEngine::AnalysisRate);
        while (!Speech.Samples.empty() && Out.size() < Wanted)
        {
            Resampler.Process(Speech.Samples, Speech.SampleRate, Out);
        }
        Out.resize(Wanted, 0.0f);
        return Out;
    }();
    return Samples;
}

void SetRealTimeFactor(benchmark::State& State)
{
    State.counters["RTF"] = benchmark::Counter(MinuteSeconds, benchmark::Counter::kIsIterationInvariantRate);
}

void Engine(benchmark::State& State)
{
    const auto& Samples = Minute16k();
    for (auto _ : State)
    {
        LipsyncEngine::FFaceEngine FaceEngine(LipsyncEngine::FAnimationOptions{});
        benchmark::DoNotOptimize(FaceEngine.Animate(Samples, LipsyncEngine::AnalysisRate));
    }
    SetRealTimeFactor(State);
}

void FrameEnergies(benchmark::State& State)
{
    const auto& Samples = Minute16k();
    const std::size_t Hop = LipsyncEngine::AnalysisRate / 100;
    for (auto _ : State)
    {
        std::vector<float> Energies;
        for (std::size_t Start = 0; Start + Hop <= Samples.size(); Start += Hop)
        {
            float Sum = 0.0f;
            for (std::size_t Index = Start; Index < Start + Hop; ++Index)
            {
                Sum += Samples[Index] * Samples[Index];
            }
            Energies.push_back(10.0f * std::log10(Sum / Hop + 1e-12f));
        }
        benchmark::DoNotOptimize(Energies);
    }
    SetRealTimeFactor(State);
}

BENCHMARK(Engine)->Unit(benchmark::kMillisecond);
BENCHMARK(FrameEnergies)->Unit(benchmark::kMillisecond);

// Prints the runs as usual and keeps their times for the ratio.
class FRatioReporter : public benchmark::ConsoleReporter
{
public:
    std::map<std::string, double> Seconds;

    void ReportRuns(const std::vector<Run>& Runs) override
    {
        for (const Run& R : Runs)
        {
            Seconds[R.benchmark_name()] = R.GetAdjustedRealTime();
        }
        ConsoleReporter::ReportRuns(Runs);
    }
};
} // namespace

int main(int Argc, char** Argv)
{
    benchmark::Initialize(&Argc, Argv);
    FRatioReporter Reporter;
    benchmark::RunSpecifiedBenchmarks(&Reporter);
    const auto Engine = Reporter.Seconds.find("Engine");
    const auto Baseline = Reporter.Seconds.find("FrameEnergies");
    if (Engine != Reporter.Seconds.end() && Baseline != Reporter.Seconds.end() && Baseline->second > 0.0)
    {
        std::printf(
            "engine: %.1f ms per minute of speech, real-time factor %.0f; %.1f times the energy pass\n",
            Engine->second, MinuteSeconds * 1000.0 / Engine->second, Engine->second / Baseline->second);
    }
    benchmark::Shutdown();
    return 0;
}
