// The module's transport next to baselines measured in the same run, each pair
// timed in turn within one iteration so that a busy machine slows both alike:
// - a lipsync request with 1 MB of audio through the dispatcher, ticked as fast as
//   the caller can, against a bare libcurl easy POST of the same body;
// - building the multipart body for 10 MB of audio, against a memcpy of the audio;
// - 64 concurrent requests on one dispatcher, against 64 on a bare libcurl multi.
#include "CadrelBlendShape.h"
#include "CadrelBlendShapeBody.h"
#include "CadrelJson.h"
#include "HttpModule.h"
#include "TransportTestServers.h"

#include <benchmark/benchmark.h>
#include <curl/curl.h>

#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <thread>
#include <vector>

namespace
{
using FClock = std::chrono::steady_clock;

// A loopback server that answers like both server kinds, and the endpoints
// pointed at it.
struct FLoopback
{
    FLipsyncTestServer Server{false};
    FLipsyncTestServer::FEndpointGuard Endpoints{Server.BaseURL()};
    std::string URL = Server.BaseURL().ToUTF8() + "/dh/api/v2/zel";
};

FLoopback& Loopback()
{
    static FLoopback Instance;
    return Instance;
}

TArray<uint8> Audio(int32 Bytes)
{
    TArray<uint8> Data;
    Data.SetNum(Bytes);
    for (int32 Index = 0; Index < Bytes; ++Index)
    {
        Data[Index] = static_cast<uint8>(Index * 31);
    }
    return Data;
}

size_t Discard(char*, size_t Size, size_t Count, void*)
{
    return Size * Count;
}

// The same request as the dispatcher's, through a bare easy handle.
CURL* MakeEasy(const std::string& URL, const std::string& Body, curl_slist* Headers)
{
    CURL* Easy = curl_easy_init();
    curl_easy_setopt(Easy, CURLOPT_URL, URL.c_str());
    curl_easy_setopt(Easy, CURLOPT_POSTFIELDS, Body.data());
    curl_easy_setopt(Easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(Body.size()));
    curl_easy_setopt(Easy, CURLOPT_HTTPHEADER, Headers);
    curl_easy_setopt(Easy, CURLOPT_WRITEFUNCTION, Discard);
    return Easy;
}

struct FBareRequest
{
    explicit FBareRequest(int32 AudioBytes)
    {
        FString Json;
        CadrelJson::ZELRequestToString(FCadrelZELRequest(), Json);
        const TArray<uint8> Bytes = MakeZELRequestBody(Json, Audio(AudioBytes));
        Body.assign(reinterpret_cast<const char*>(Bytes.GetData()), static_cast<size_t>(Bytes.Num()));
        Headers = curl_slist_append(Headers, "Content-Type: multipart/form-data; boundary=ZELBoundary");
        Headers = curl_slist_append(Headers, "Expect:");
    }
    ~FBareRequest() { curl_slist_free_all(Headers); }
    std::string Body;
    curl_slist* Headers = nullptr;
};

enum class ETicking
{
    // Tick in a tight loop, as fast as the caller can.
    Spin,
    // Flush: tick, and sleep on the manager's queue until the next event.
    Flush,
};

// Sends Count requests at once on one dispatcher and ticks until all have answered;
// false when one is lost (the dispatcher reports no answer without a response).
bool DispatchAndWait(FCadrelBlendShape& Dispatcher, const TArray<uint8>& Data, int32 Count, int32& Answered,
                     ETicking Ticking = ETicking::Spin)
{
    Answered = 0;
    FCadrelZELRequest Request;
    for (int32 Index = 0; Index < Count; ++Index)
    {
        Dispatcher.ZELRequest(Request, FCadrelZELRequestParam(), Data);
    }
    const auto Deadline = FClock::now() + std::chrono::seconds(30);
    while (Answered < Count)
    {
        if (FClock::now() > Deadline)
        {
            return false;
        }
        if (Ticking == ETicking::Flush)
        {
            FHttpModule::Get().GetHttpManager().Flush(EHttpFlushReason::Default);
        }
        else
        {
            FHttpModule::Get().GetHttpManager().Tick(0.0f);
        }
    }
    return true;
}

// A dispatcher that counts its answers in Answered.
TSharedRef<FCadrelBlendShape> CountingDispatcher(int32& Answered)
{
    const TSharedRef<FCadrelBlendShape> Dispatcher = MakeShared<FCadrelBlendShape>();
    Dispatcher->OnZELRequestComplete.BindLambda([&Answered](FHttpRequestPtr, FHttpResponsePtr, bool)
                                                { ++Answered; });
    return Dispatcher;
}

double Seconds(FClock::time_point Start)
{
    return std::chrono::duration<double>(FClock::now() - Start).count();
}

void BM_LipsyncRequest1MB(benchmark::State& State, ETicking Ticking)
{
    const std::string& URL = Loopback().URL;
    const TArray<uint8> Data = Audio(1 << 20);
    const FBareRequest Bare(1 << 20);
    CURL* Easy = MakeEasy(URL, Bare.Body, Bare.Headers);
    int32 Answered = 0;
    const TSharedRef<FCadrelBlendShape> Dispatcher = CountingDispatcher(Answered);
    double Curl = 0.0;
    double Ours = 0.0;
    for (auto _ : State)
    {
        auto Start = FClock::now();
        curl_easy_perform(Easy);
        Curl += Seconds(Start);
        Start = FClock::now();
        if (!DispatchAndWait(*Dispatcher, Data, 1, Answered, Ticking))
        {
            State.SkipWithError("a request got no answer");
            break;
        }
        Ours += Seconds(Start);
    }
    curl_easy_cleanup(Easy);
    State.counters["vs_curl"] = Ours / Curl;
}
// Loopback round trips on a shared machine vary; a second per repetition steadies them.
BENCHMARK_CAPTURE(BM_LipsyncRequest1MB, Spin, ETicking::Spin)
    ->MinTime(1.0)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->DisplayAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LipsyncRequest1MB, Flush, ETicking::Flush)
    ->MinTime(1.0)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(5)
    ->DisplayAggregatesOnly(true);

void BM_MultipartBody10MB(benchmark::State& State)
{
    const TArray<uint8> Data = Audio(10 << 20);
    FString Json;
    CadrelJson::ZELRequestToString(FCadrelZELRequest(), Json);
    std::vector<uint8> Copy(static_cast<size_t>(Data.Num()));
    double Memcpy = 0.0;
    double Ours = 0.0;
    for (auto _ : State)
    {
        auto Start = FClock::now();
        std::memcpy(Copy.data(), Data.GetData(), Copy.size());
        benchmark::ClobberMemory();
        Memcpy += Seconds(Start);
        Start = FClock::now();
        benchmark::DoNotOptimize(MakeZELRequestBody(Json, Data));
        Ours += Seconds(Start);
    }
    State.counters["vs_memcpy"] = Ours / Memcpy;
}
BENCHMARK(BM_MultipartBody10MB)->Unit(benchmark::kMillisecond)->Repetitions(5)->DisplayAggregatesOnly(true);

void BM_Concurrent64(benchmark::State& State)
{
    const std::string& URL = Loopback().URL;
    const TArray<uint8> Data = Audio(64 << 10);
    const FBareRequest Bare(64 << 10);
    CURLM* Multi = curl_multi_init();
    int32 Answered = 0;
    const TSharedRef<FCadrelBlendShape> Dispatcher = CountingDispatcher(Answered);
    double Curl = 0.0;
    double Ours = 0.0;
    for (auto _ : State)
    {
        auto Start = FClock::now();
        std::vector<CURL*> Easies;
        for (int Index = 0; Index < 64; ++Index)
        {
            Easies.push_back(MakeEasy(URL, Bare.Body, Bare.Headers));
            curl_multi_add_handle(Multi, Easies.back());
        }
        for (int Running = 1; Running > 0;)
        {
            curl_multi_perform(Multi, &Running);
            curl_multi_poll(Multi, nullptr, 0, 1, nullptr);
        }
        for (CURL* Easy : Easies)
        {
            curl_multi_remove_handle(Multi, Easy);
            curl_easy_cleanup(Easy);
        }
        Curl += Seconds(Start);
        Start = FClock::now();
        if (!DispatchAndWait(*Dispatcher, Data, 64, Answered))
        {
            State.SkipWithError("a request got no answer");
            break;
        }
        Ours += Seconds(Start);
    }
    curl_multi_cleanup(Multi);
    State.counters["requests_per_s"] = benchmark::Counter(64.0 * State.iterations() / Ours);
    State.counters["vs_curl_multi"] = Ours / Curl;
}
BENCHMARK(BM_Concurrent64)->Unit(benchmark::kMillisecond)->Repetitions(5)->DisplayAggregatesOnly(true);

// Prints the median ratios at the end, each with its target.
class FRatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& Runs) override
    {
        for (const Run& Each : Runs)
        {
            if (Each.run_type == Run::RT_Aggregate && Each.aggregate_name == "median")
            {
                for (const auto& [Name, Counter] : Each.counters)
                {
                    Medians[Each.run_name.function_name + " " + Name] = Counter.value;
                }
            }
        }
        ConsoleReporter::ReportRuns(Runs);
    }
    void Print() const
    {
        const std::map<std::string, double> Targets = {{"BM_LipsyncRequest1MB/Spin vs_curl", 1.15},
                                                       {"BM_LipsyncRequest1MB/Flush vs_curl", 1.15},
                                                       {"BM_MultipartBody10MB vs_memcpy", 2.0}};
        std::printf("\nTime as a multiple of the same-run baseline (median; lower is better):\n");
        for (const auto& [Name, Value] : Medians)
        {
            const auto Target = Targets.find(Name);
            std::printf("%-40s %8.2f", Name.c_str(), Value);
            if (Target != Targets.end())
            {
                std::printf("  (target %.2f: %s)", Target->second,
                            Value <= Target->second ? "met" : "MISSED");
            }
            std::printf("\n");
        }
    }

private:
    std::map<std::string, double> Medians;
};
} // namespace

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    FRatioReporter Reporter;
    benchmark::RunSpecifiedBenchmarks(&Reporter);
    Reporter.Print();
    benchmark::Shutdown();
    return 0;
}
