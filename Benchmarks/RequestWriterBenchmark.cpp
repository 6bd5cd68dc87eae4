// Writing one request document, against simdjson parsing the same bytes as the
// baseline measured in the same run.
#include "CadrelJson.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <string>

namespace
{
FCadrelZELRequest TypicalRequest()
{
    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.ExplicitEmotion = ECadrelExplicitEmotion::CEE_Happy;
    Request.Meta.PrevSize = 183422;
    Request.Meta.Latency = 0.734f;
    Request.Meta.PrevAudioLength = 412;
    return Request;
}

void BM_ZELRequestToString(benchmark::State& State)
{
    const FCadrelZELRequest Request = TypicalRequest();
    FString Json;
    for (auto _ : State)
    {
        CadrelJson::ZELRequestToString(Request, Json);
        benchmark::DoNotOptimize(Json);
    }
    State.SetItemsProcessed(State.iterations());
    State.SetBytesProcessed(State.iterations() * static_cast<int64_t>(Json.ToUTF8().size()));
}
BENCHMARK(BM_ZELRequestToString);

void BM_SimdjsonParseSameDocument(benchmark::State& State)
{
    FString Json;
    CadrelJson::ZELRequestToString(TypicalRequest(), Json);
    const simdjson::padded_string Bytes(Json.ToUTF8());
    simdjson::dom::parser Parser;
    for (auto _ : State)
    {
        simdjson::dom::element Root;
        benchmark::DoNotOptimize(Parser.parse(Bytes).get(Root));
        benchmark::DoNotOptimize(Root);
    }
    State.SetItemsProcessed(State.iterations());
    State.SetBytesProcessed(State.iterations() * static_cast<int64_t>(Bytes.size()));
}
BENCHMARK(BM_SimdjsonParseSameDocument);
} // namespace
