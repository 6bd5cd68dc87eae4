#include "Serialization/JsonSerializer.h"

#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <cstdio>
#include <random>
#include <string>

// Reading a long lipsync reply into the host's JSON tree, next to simdjson parsing
// the same UTF-8 bytes, so the cost of the tree shows as a ratio of bytes per second.
namespace
{
constexpr int32 WeightsPerFrame = 52;
constexpr int32 BonesPerFrame = 3;

void AppendNumber(std::string& Out, double Value)
{
    char Buffer[32];
    const int Written = std::snprintf(Buffer, sizeof(Buffer), "%.17g", Value);
    Out.append(Buffer, static_cast<SIZE_T>(Written));
}

// A reply shaped like the server's: frames of 52 weights and three Euler triples,
// with names, at full double precision, about 2 MB in all.
std::string MakeLipsyncReply(int32 FrameCount)
{
    std::mt19937 Random(7);
    std::uniform_real_distribution<double> Weight(0.0, 1.0);
    std::string Json = R"({"version":"1.5.7","fps":30,"platform":"cloud","frames":[)";
    for (int32 Frame = 0; Frame < FrameCount; ++Frame)
    {
        Json += Frame ? R"(,{"blendshapes":[)" : R"({"blendshapes":[)";
        for (int32 Index = 0; Index < WeightsPerFrame; ++Index)
        {
            Json += Index ? "," : "";
            AppendNumber(Json, Weight(Random));
        }
        Json += R"(],"bones":[)";
        for (int32 Bone = 0; Bone < BonesPerFrame; ++Bone)
        {
            Json += Bone ? R"(,{"eul":[)" : R"({"eul":[)";
            for (int32 Axis = 0; Axis < 3; ++Axis)
            {
                Json += Axis ? "," : "";
                AppendNumber(Json, Weight(Random) * 40.0 - 20.0);
            }
            Json += "]}";
        }
        Json += "]}";
    }
    Json += R"(],"blendShapesNames":[)";
    for (int32 Index = 0; Index < WeightsPerFrame; ++Index)
    {
        Json += (Index ? ",\"shape" : "\"shape") + std::to_string(Index) + "\"";
    }
    Json += R"(],"bonesNames":["eye_l","eye_r","neck"]})";
    return Json;
}

const std::string& Reply()
{
    static const std::string Json = MakeLipsyncReply(1750);
    return Json;
}

void SimdjsonParsesTheSameBytes(benchmark::State& State)
{
    const simdjson::padded_string Padded(Reply());
    simdjson::dom::parser Parser;
    for (auto _ : State)
    {
        simdjson::dom::element Root;
        if (Parser.parse(Padded).get(Root))
        {
            State.SkipWithError("simdjson refused the reply");
            break;
        }
        benchmark::DoNotOptimize(Root);
    }
    State.SetBytesProcessed(State.iterations() * static_cast<int64>(Reply().size()));
}

// From UTF-8 bytes, as a caller holding an HTTP body would; the tree is freed in
// the loop, as a reader's caller frees it.
void DeserializeFromUtf8(benchmark::State& State)
{
    for (auto _ : State)
    {
        TSharedPtr<FJsonValue> Value;
        if (!FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Reply()), Value))
        {
            State.SkipWithError("the reply did not deserialise");
            break;
        }
        benchmark::DoNotOptimize(Value.Get());
    }
    State.SetBytesProcessed(State.iterations() * static_cast<int64>(Reply().size()));
}

// From host text, as the codec's readers do: includes the conversion to UTF-8.
void DeserializeFromText(benchmark::State& State)
{
    const FString Text = FString::FromUTF8(Reply());
    for (auto _ : State)
    {
        TSharedPtr<FJsonValue> Value;
        if (!FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Text), Value))
        {
            State.SkipWithError("the reply did not deserialise");
            break;
        }
        benchmark::DoNotOptimize(Value.Get());
    }
    State.SetBytesProcessed(State.iterations() * static_cast<int64>(Reply().size()));
}
} // namespace

BENCHMARK(SimdjsonParsesTheSameBytes)->Unit(benchmark::kMillisecond);
BENCHMARK(DeserializeFromUtf8)->Unit(benchmark::kMillisecond);
BENCHMARK(DeserializeFromText)->Unit(benchmark::kMillisecond);
