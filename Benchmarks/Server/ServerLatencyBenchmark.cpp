#include "BenchmarkRequests.h"
#include "LipsyncServer.h"

#include "FaceEngine.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <thread>
#include <vector>

// Latency of one kept-alive loopback connection to an in-process server. Every
// lipsync benchmark reports its time as a ratio to the same connection's /healthz
// round trip, measured in the same run ("x_healthz"), and to its budget
// ("x_budget": 20 ms for a 500 ms stream chunk, 300 ms for a 60 s file; below 1
// meets it).
namespace
{
using FClock = std::chrono::steady_clock;

// With the live link on, its receiver is not running: the link's cost to an answer
// is what a server pays whether anyone watches or not.
struct FBenchServer
{
    explicit FBenchServer(bool bVelk = true)
    {
        FLipsyncServerOptions Options;
        Options.Port = 0;
        Options.bQuiet = true;
        Options.bVelk = bVelk;
        Server = std::make_unique<FLipsyncServer>(Options);
        std::string Error;
        if (!Server->Start(Error))
        {
            std::abort();
        }
    }
    std::unique_ptr<FLipsyncServer> Server;
};

FBenchServer& SharedServer()
{
    static FBenchServer Instance;
    return Instance;
}

// Median /healthz round trip on Client, in seconds.
double HealthzSeconds(httplib::Client& Client)
{
    std::vector<double> Times;
    for (int Round = 0; Round < 201; ++Round)
    {
        const auto Start = FClock::now();
        Client.Get("/healthz");
        Times.push_back(std::chrono::duration<double>(FClock::now() - Start).count());
    }
    std::nth_element(Times.begin(), Times.begin() + 100, Times.end());
    return Times[100];
}

void ReportRatios(benchmark::State& State, double Seconds, double Baseline, double Budget)
{
    const double PerIteration = Seconds / double(State.iterations());
    State.counters["ms"] = PerIteration * 1000.0;
    State.counters["x_healthz"] = PerIteration / Baseline;
    State.counters["x_budget"] = PerIteration / Budget;
}

void BM_Healthz(benchmark::State& State)
{
    httplib::Client Client(SharedServer().Server->BaseUrl());
    for (auto _ : State)
    {
        benchmark::DoNotOptimize(Client.Get("/healthz"));
    }
}
BENCHMARK(BM_Healthz)->UseRealTime();

void BM_StreamChunk500ms(benchmark::State& State)
{
    httplib::Client Client(SharedServer().Server->BaseUrl());
    const double Baseline = HealthzSeconds(Client);
    const std::string Chunk = BenchmarkRequests::SpeechWav(0.5);
    int Index = 0;
    double Seconds = 0.0;
    for (auto _ : State)
    {
        const auto Start = FClock::now();
        const auto Result = BenchmarkRequests::Post(Client, "/dh/api/v1/zel_stream", Chunk, Index++, 7);
        Seconds += std::chrono::duration<double>(FClock::now() - Start).count();
        if (!Result || Result->status != 200)
        {
            State.SkipWithError("the chunk was not answered");
            break;
        }
    }
    ReportRatios(State, Seconds, Baseline, 0.020);
}
BENCHMARK(BM_StreamChunk500ms)->UseRealTime()->Unit(benchmark::kMillisecond);

// The same chunks to the shared server and to one with the live link off, in
// turn; "x_nolink" is the first's time over the second's (1: the link costs the
// answer nothing). Chunks follow each other 20 ms apart, 25 times faster than a
// live stream of 500 ms chunks, so that each chunk's sending is done before the next.
void BM_StreamChunk500msLinkCost(benchmark::State& State)
{
    static FBenchServer Unlinked(false);
    httplib::Client Linked(SharedServer().Server->BaseUrl());
    httplib::Client Off(Unlinked.Server->BaseUrl());
    const std::string Chunk = BenchmarkRequests::SpeechWav(0.5);
    int Index = 0;
    double Seconds[2] = {0.0, 0.0};
    for (auto _ : State)
    {
        httplib::Client* Clients[2] = {&Linked, &Off};
        for (int Which = 0; Which < 2; ++Which)
        {
            const auto Start = FClock::now();
            const auto Result =
                BenchmarkRequests::Post(*Clients[Which], "/dh/api/v1/zel_stream", Chunk, Index, 8);
            Seconds[Which] += std::chrono::duration<double>(FClock::now() - Start).count();
            if (!Result || Result->status != 200)
            {
                State.SkipWithError("the chunk was not answered");
                return;
            }
        }
        ++Index;
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    State.counters["ms"] = Seconds[0] * 1000.0 / double(State.iterations());
    State.counters["x_nolink"] = Seconds[0] / Seconds[1];
}
BENCHMARK(BM_StreamChunk500msLinkCost)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(100);

void BM_File60s(benchmark::State& State)
{
    httplib::Client Client(SharedServer().Server->BaseUrl());
    Client.set_read_timeout(60, 0);
    const double Baseline = HealthzSeconds(Client);
    const std::string File = BenchmarkRequests::SpeechWav(60.0);
    double Seconds = 0.0;
    for (auto _ : State)
    {
        const auto Start = FClock::now();
        const auto Result = BenchmarkRequests::Post(Client, "/dh/api/v2/zel", File);
        Seconds += std::chrono::duration<double>(FClock::now() - Start).count();
        if (!Result || Result->status != 200)
        {
            State.SkipWithError("the file was not answered");
            break;
        }
        State.counters["answer_bytes"] = double(Result->body.size());
    }
    ReportRatios(State, Seconds, Baseline, 0.300);
}
BENCHMARK(BM_File60s)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(10);

// The engine alone on the same 60 s, for the share of the end-to-end time that
// HTTP, WAV reading and JSON add.
void BM_Engine60s(benchmark::State& State)
{
    const std::string Wav = BenchmarkRequests::SpeechWav(60.0);
    // The file's samples follow its 44-byte header.
    std::vector<float> Samples((Wav.size() - 44) / 2);
    for (std::size_t Index = 0; Index < Samples.size(); ++Index)
    {
        const auto Low = static_cast<unsigned char>(Wav[44 + 2 * Index]);
        const auto High = static_cast<unsigned char>(Wav[45 + 2 * Index]);
        Samples[Index] = float(std::int16_t(Low | (High << 8))) / 32768.0f;
    }
    for (auto _ : State)
    {
        LipsyncEngine::FFaceEngine Engine(LipsyncEngine::FAnimationOptions{});
        benchmark::DoNotOptimize(Engine.Animate(Samples, 16000));
    }
}
BENCHMARK(BM_Engine60s)->UseRealTime()->Unit(benchmark::kMillisecond)->Iterations(10);
} // namespace
