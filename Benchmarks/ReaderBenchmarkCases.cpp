#include "ReaderBenchmarkCases.h"

#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"

#include <cstdio>
#include <map>
#include <random>

namespace
{
constexpr int32 Fps = 60;
constexpr int32 WeightsPerFrame = 52;
constexpr int32 BonesPerFrame = 3;

void AppendFixed(std::string& Out, double Value, int Decimals)
{
    char Buffer[32];
    const int Written = std::snprintf(Buffer, sizeof(Buffer), "%.*f", Decimals, Value);
    Out.append(Buffer, static_cast<SIZE_T>(Written));
}

// A cloud answer as the server writes it: weights with six decimals, three Euler
// triples per frame, names at the end. One minute is about 2 MB.
std::string MakeLipsyncAnswer(int32 Seconds)
{
    std::mt19937 Random(7);
    std::uniform_real_distribution<double> Unit(0.0, 1.0);
    std::string Json = R"({"version":"2.0","platform":"cloud","fps":60,"frames":[)";
    for (int32 Frame = 0; Frame < Seconds * Fps; ++Frame)
    {
        Json += Frame ? R"(,{"blendshapes":[)" : R"({"blendshapes":[)";
        for (int32 Index = 0; Index < WeightsPerFrame; ++Index)
        {
            Json += Index ? "," : "";
            AppendFixed(Json, Unit(Random), 6);
        }
        Json += R"(],"bones":[)";
        for (int32 Bone = 0; Bone < BonesPerFrame; ++Bone)
        {
            Json += Bone ? R"(,{"eul":[)" : R"({"eul":[)";
            for (int32 Axis = 0; Axis < 3; ++Axis)
            {
                Json += Axis ? "," : "";
                AppendFixed(Json, Unit(Random) * 40.0 - 20.0, 4);
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
    return Json + R"(],"bonesNames":["eye_l","eye_r","neck"]})";
}

// An Audio2Face export of the same animation: one row of weights per frame.
std::string MakeAudio2FaceExport(int32 Seconds)
{
    std::mt19937 Random(11);
    std::uniform_real_distribution<double> Unit(0.0, 1.0);
    std::string Json = R"({"exportFps":60,"trackPath":"/World/audio2face/Player","numPoses":52,)";
    Json += R"("numFrames":)" + std::to_string(Seconds * Fps) + R"(,"facsNames":[)";
    for (int32 Index = 0; Index < WeightsPerFrame; ++Index)
    {
        Json += (Index ? ",\"pose" : "\"pose") + std::to_string(Index) + "\"";
    }
    Json += R"(],"weightMat":[)";
    for (int32 Frame = 0; Frame < Seconds * Fps; ++Frame)
    {
        Json += Frame ? ",[" : "[";
        for (int32 Index = 0; Index < WeightsPerFrame; ++Index)
        {
            Json += Index ? "," : "";
            AppendFixed(Json, Unit(Random), 6);
        }
        Json += "]";
    }
    return Json + "]}";
}
} // namespace

ReaderBenchmark::FInput::FInput(std::string InUtf8)
    : Utf8(std::move(InUtf8)),
      Bytes(reinterpret_cast<const uint8*>(Utf8.data()), static_cast<int32>(Utf8.size())),
      Text(FString::FromUTF8(Utf8))
{
}

bool ReaderBenchmark::IsAnswer(EDocument Document)
{
    return Document == EDocument::Answer2MB || Document == EDocument::Answer20MB;
}

const ReaderBenchmark::FInput& ReaderBenchmark::Input(EDocument Document)
{
    static std::map<EDocument, FInput> Inputs;
    auto Found = Inputs.find(Document);
    if (Found == Inputs.end())
    {
        const int32 Seconds =
            (Document == EDocument::Answer2MB || Document == EDocument::Export2MB) ? 60 : 600;
        std::string Json = IsAnswer(Document) ? MakeLipsyncAnswer(Seconds) : MakeAudio2FaceExport(Seconds);
        Found = Inputs.emplace(Document, FInput(std::move(Json))).first;
    }
    return Found->second;
}

bool ReaderBenchmark::ReadOnce(EReader Reader, const FInput& In, FCadrelZELResponse& Out)
{
    switch (Reader)
    {
    case EReader::FastBytes:
        CadrelJson::StringToZELResponse(In.Bytes, Out);
        break;
    case EReader::FastText:
        CadrelJson::StringToZELResponse(In.Text, Out);
        break;
    case EReader::GeneralText:
        CadrelJson::StringToZELResponse_Internal(In.Text, Out);
        break;
    }
    return Out.Frames.Num() > 0;
}

bool ReaderBenchmark::ReadOnce(EReader Reader, const FInput& In, FCadrelAudio2FaceBlendShapeInfo& Out)
{
    switch (Reader)
    {
    case EReader::FastBytes:
        CadrelJson::StringToAudio2FaceResponse(In.Bytes, Out);
        break;
    case EReader::FastText:
        CadrelJson::StringToAudio2FaceResponse(In.Text, Out);
        break;
    case EReader::GeneralText:
        CadrelJson::StringToAudio2FaceResponse_Internal(In.Text, Out);
        break;
    }
    return Out.WeightMat.Num() > 0;
}
