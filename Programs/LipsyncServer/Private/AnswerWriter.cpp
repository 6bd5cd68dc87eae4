#include "AnswerWriter.h"

#include "JsonText.h"

namespace
{
using LipsyncEngine::FFaceFrame;

// Enough for a frame of 52 weights of up to seven characters and three bones.
constexpr std::size_t BytesPerFrame = 520;

template <std::size_t N> void AppendNames(std::string& Out, const std::array<std::string_view, N>& Names)
{
    Out += '[';
    for (std::size_t Index = 0; Index < N; ++Index)
    {
        Out += Index ? "," : "";
        AppendJsonString(Out, Names[Index]);
    }
    Out += ']';
}

template <std::size_t N> void AppendValues(std::string& Out, const std::array<float, N>& Values)
{
    Out += '[';
    for (std::size_t Index = 0; Index < N; ++Index)
    {
        Out += Index ? "," : "";
        AppendWeight(Out, Values[Index]);
    }
    Out += ']';
}

void AppendCloudFrame(std::string& Out, const FFaceFrame& Frame)
{
    Out += "{\"blendshapes\":";
    AppendValues(Out, Frame.Weights);
    Out += ",\"bones\":[";
    for (std::size_t Bone = 0; Bone < Frame.Bones.size(); ++Bone)
    {
        Out += Bone ? ",{\"eul\":" : "{\"eul\":";
        AppendValues(Out, Frame.Bones[Bone]);
        Out += '}';
    }
    Out += "]}";
}

// The stream keys close the answer's object.
void AppendVelkAndClose(std::string& Out, const std::optional<FVelkInfo>& Velk)
{
    if (Velk)
    {
        Out += ",\"VelkHost\":";
        AppendJsonString(Out, Velk->Host);
        Out += ",\"VelkPort\":";
        AppendInteger(Out, Velk->VelkPort);
        Out += ",\"AudioPort\":";
        AppendInteger(Out, Velk->AudioPort);
        Out += ",\"TimeLength\":";
        AppendInteger(Out, Velk->TimeLengthMs);
    }
    Out += '}';
}
} // namespace

std::string WriteCloudAnswer(FFrames Frames, int Fps, std::string_view Platform,
                             const std::optional<FVelkInfo>& Velk)
{
    std::string Out;
    Out.reserve(1024 + Frames.size() * BytesPerFrame);
    Out += "{\"version\":\"1.0.0\",\"platform\":";
    AppendJsonString(Out, Platform);
    Out += ",\"fps\":";
    AppendInteger(Out, Fps);
    Out += ",\"frames\":[";
    for (std::size_t Index = 0; Index < Frames.size(); ++Index)
    {
        Out += Index ? "," : "";
        AppendCloudFrame(Out, Frames[Index]);
    }
    Out += "],\"blendShapesNames\":";
    AppendNames(Out, LipsyncEngine::BlendShapeNames());
    Out += ",\"bonesNames\":";
    AppendNames(Out, LipsyncEngine::BoneNames());
    AppendVelkAndClose(Out, Velk);
    return Out;
}

std::string WriteAudio2FaceExport(FFrames Frames, int Fps, std::string_view TrackPath,
                                  const std::optional<FVelkInfo>& Velk)
{
    std::string Out;
    Out.reserve(1024 + Frames.size() * BytesPerFrame);
    Out += "{\"exportFps\":";
    AppendInteger(Out, Fps);
    Out += ",\"trackPath\":";
    AppendJsonString(Out, TrackPath);
    Out += ",\"numPoses\":";
    AppendInteger(Out, std::int64_t(LipsyncEngine::NumBlendShapes));
    Out += ",\"numFrames\":";
    AppendInteger(Out, std::int64_t(Frames.size()));
    Out += ",\"facsNames\":";
    AppendNames(Out, LipsyncEngine::BlendShapeNames());
    Out += ",\"weightMat\":[";
    for (std::size_t Index = 0; Index < Frames.size(); ++Index)
    {
        Out += Index ? "," : "";
        AppendValues(Out, Frames[Index].Weights);
    }
    Out += ']';
    AppendVelkAndClose(Out, Velk);
    return Out;
}
