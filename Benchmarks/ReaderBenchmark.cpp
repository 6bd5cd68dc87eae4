// The two big readers on long lipsync answers and Audio2Face exports, next to the
// baseline "simdjson parses the same UTF-8 bytes and copies every weight into a
// std::vector<double>" measured in the same run. The Throughput benchmarks give
// absolute figures; the Ratio benchmarks time each reader and the baselines in
// turn, iteration by iteration, and their ratios are printed at the end. With
// --memory it instead reads each case once in a child process and prints the peak
// memory that the read added.
#include "ReaderBenchmarkCases.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

namespace
{
using namespace ReaderBenchmark;

// The baseline: simdjson's DOM, every number that a reader stores copied out. The
// parser and the vector are kept between runs, as the readers keep their thread's
// buffers.
class FDomBaseline
{
public:
    bool Run(const FInput& In, bool bAnswer)
    {
        Numbers.clear();
        simdjson::dom::element Root;
        simdjson::dom::array Items;
        if (Parser.parse(In.Utf8).get(Root) || Root[bAnswer ? "frames" : "weightMat"].get(Items))
        {
            return false;
        }
        for (simdjson::dom::element Item : Items)
        {
            if (!bAnswer)
            {
                CopyNumbers(Item);
                continue;
            }
            CopyNumbers(Item["blendshapes"]);
            simdjson::dom::array Bones;
            if (!Item["bones"].get(Bones))
            {
                for (simdjson::dom::element Bone : Bones)
                {
                    CopyNumbers(Bone["eul"]);
                }
            }
        }
        return !Numbers.empty();
    }

private:
    template <typename ElementType> void CopyNumbers(const ElementType& Element)
    {
        simdjson::dom::array Array;
        if (Element.get(Array))
        {
            return;
        }
        for (simdjson::dom::element Number : Array)
        {
            Numbers.push_back(Number.get_double().value_unsafe());
        }
    }

    simdjson::dom::parser Parser;
    std::vector<double> Numbers;
};

// The same on demand, for reference: a copy into a kept padded buffer, as the DOM
// parser copies into its own, then every number parsed in document order.
class FOnDemandBaseline
{
public:
    bool Run(const FInput& In, bool bAnswer)
    {
        Numbers.clear();
        Padded.resize(std::max(Padded.size(), In.Utf8.size() + simdjson::SIMDJSON_PADDING));
        std::memcpy(Padded.data(), In.Utf8.data(), In.Utf8.size());
        std::memset(Padded.data() + In.Utf8.size(), 0, simdjson::SIMDJSON_PADDING);
        simdjson::ondemand::document Doc = Parser.iterate(Padded.data(), In.Utf8.size(), Padded.size());
        for (simdjson::ondemand::value Item : Doc[bAnswer ? "frames" : "weightMat"].get_array())
        {
            if (!bAnswer)
            {
                CopyNumbers(Item);
                continue;
            }
            CopyNumbers(Item["blendshapes"]);
            for (simdjson::ondemand::value Bone : Item["bones"].get_array())
            {
                CopyNumbers(Bone["eul"]);
            }
        }
        return !Numbers.empty();
    }

private:
    template <typename ValueType> void CopyNumbers(ValueType&& Value)
    {
        for (double Number : Value.get_array())
        {
            Numbers.push_back(Number);
        }
    }

    simdjson::ondemand::parser Parser;
    std::vector<double> Numbers;
    std::string Padded;
};

enum class EWay
{
    Dom,
    OnDemand,
    Reader,
};

// One read by one way, into a fresh record for a reader, as a caller reading one
// answer has.
bool ReadOnceBy(EWay Way, EReader Reader, EDocument Document)
{
    static FDomBaseline Dom;
    static FOnDemandBaseline OnDemand;
    const FInput& In = Input(Document);
    switch (Way)
    {
    case EWay::Dom:
        return Dom.Run(In, IsAnswer(Document));
    case EWay::OnDemand:
        return OnDemand.Run(In, IsAnswer(Document));
    case EWay::Reader:
        break;
    }
    if (IsAnswer(Document))
    {
        FCadrelZELResponse Response;
        return ReadOnce(Reader, In, Response);
    }
    FCadrelAudio2FaceBlendShapeInfo Info;
    return ReadOnce(Reader, In, Info);
}

void Throughput(benchmark::State& State, EWay Way, EReader Reader, EDocument Document)
{
    for (auto _ : State)
    {
        if (!ReadOnceBy(Way, Reader, Document))
        {
            State.SkipWithError("nothing was read");
            break;
        }
    }
    State.SetBytesProcessed(State.iterations() * static_cast<int64>(Input(Document).Utf8.size()));
}

double SecondsOf(EWay Way, EReader Reader, EDocument Document)
{
    const auto Start = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(ReadOnceBy(Way, Reader, Document));
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - Start).count();
}

// The reader and both baselines in turn, so that a busy machine slows all three alike.
void Ratio(benchmark::State& State, EReader Reader, EDocument Document)
{
    double Dom = 0.0;
    double OnDemand = 0.0;
    double Read = 0.0;
    for (auto _ : State)
    {
        Dom += SecondsOf(EWay::Dom, Reader, Document);
        OnDemand += SecondsOf(EWay::OnDemand, Reader, Document);
        Read += SecondsOf(EWay::Reader, Reader, Document);
    }
    State.counters["vs_dom"] = Dom / Read;
    State.counters["vs_ondemand"] = OnDemand / Read;
}

// Keeps the medians of the Ratio benchmarks' counters, to print them at the end.
class FRatioReporter : public benchmark::ConsoleReporter
{
public:
    void ReportRuns(const std::vector<Run>& Runs) override
    {
        for (const Run& Each : Runs)
        {
            if (Each.run_type == Run::RT_Aggregate && Each.aggregate_name == "median" &&
                Each.counters.count("vs_dom") != 0)
            {
                Ratios[Each.run_name.function_name] = {Each.counters.at("vs_dom").value,
                                                       Each.counters.at("vs_ondemand").value};
            }
        }
        ConsoleReporter::ReportRuns(Runs);
    }

    void PrintRatios() const
    {
        std::printf(
            "\nThroughput as a share of simdjson's on the same UTF-8 bytes (median; higher is better):\n");
        for (const FCase& Case : Cases)
        {
            for (const FReaderName& Reader : Readers)
            {
                const auto Found = Ratios.find(std::string("Ratio/") + Reader.Name + "/" + Case.Name);
                if (Found == Ratios.end())
                {
                    continue;
                }
                const auto [VsDom, VsOnDemand] = Found->second;
                std::printf("%-11s %-12s %5.2fx DOM baseline  %5.2fx on-demand baseline", Case.Name,
                            Reader.Name, VsDom, VsOnDemand);
                if (Reader.Target > 0.0)
                {
                    std::printf("  (target %.2fx: %s)", Reader.Target,
                                VsDom >= Reader.Target ? "met" : "MISSED");
                }
                std::printf("\n");
            }
        }
    }

private:
    std::map<std::string, std::pair<double, double>> Ratios;
};

void Repeated(benchmark::internal::Benchmark* Benchmark)
{
    Benchmark->Unit(benchmark::kMillisecond)->Repetitions(5)->DisplayAggregatesOnly(true);
}
} // namespace

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--memory") == 0)
    {
        return MeasureMemory();
    }
    benchmark::Initialize(&argc, argv);
    for (const FCase& Case : Cases)
    {
        const std::string Suffix = std::string("/") + Case.Name;
        Repeated(benchmark::RegisterBenchmark(("Throughput/SimdjsonDom" + Suffix).c_str(), Throughput,
                                              EWay::Dom, EReader::FastBytes, Case.Document));
        Repeated(benchmark::RegisterBenchmark(("Throughput/SimdjsonOnDemand" + Suffix).c_str(), Throughput,
                                              EWay::OnDemand, EReader::FastBytes, Case.Document));
        for (const FReaderName& Reader : Readers)
        {
            Repeated(benchmark::RegisterBenchmark((std::string("Throughput/") + Reader.Name + Suffix).c_str(),
                                                  Throughput, EWay::Reader, Reader.Reader, Case.Document));
            Repeated(benchmark::RegisterBenchmark((std::string("Ratio/") + Reader.Name + Suffix).c_str(),
                                                  Ratio, Reader.Reader, Case.Document));
        }
    }
    FRatioReporter Reporter;
    benchmark::RunSpecifiedBenchmarks(&Reporter);
    Reporter.PrintRatios();
    benchmark::Shutdown();
    return 0;
}
