#include "ViewEvents.h"

#include "Serialization/JsonWriter.h"

namespace
{
using FEventWriter = TJsonWriter<>;

void WriteAngles(FEventWriter& Writer, const FString& Key, const FViewAngles& Angles, bool bRoll)
{
    Writer.WriteObjectStart(Key);
    Writer.WriteValue(TEXT("pitch"), Angles.Pitch);
    Writer.WriteValue(TEXT("yaw"), Angles.Yaw);
    if (bRoll)
    {
        Writer.WriteValue(TEXT("roll"), Angles.Roll);
    }
    Writer.WriteObjectEnd();
}

std::string Finish(FEventWriter& Writer, FString& Json)
{
    Writer.WriteObjectEnd();
    Writer.Close();
    return Json.ToUTF8();
}
} // namespace

std::string FrameEventJson(const FViewFrame& Frame)
{
    FString Json;
    FEventWriter Writer(&Json);
    Writer.WriteObjectStart();
    Writer.WriteValue(TEXT("type"), TEXT("frame"));
    Writer.WriteValue(TEXT("stream"), Frame.Stream);
    Writer.WriteValue(TEXT("frame"), Frame.Number);
    Writer.WriteValue(TEXT("time"), Frame.Time);
    Writer.WriteValue(TEXT("arrival"), Frame.ArrivalMs);
    Writer.WriteObjectStart(TEXT("weights"));
    for (const auto& [Name, Value] : Frame.Weights)
    {
        Writer.WriteValue(FString::FromUTF8(Name), Value);
    }
    Writer.WriteObjectEnd();
    Writer.WriteObjectStart(TEXT("pose"));
    WriteAngles(Writer, TEXT("head"), Frame.Head, true);
    WriteAngles(Writer, TEXT("leftEye"), Frame.LeftEye, false);
    WriteAngles(Writer, TEXT("rightEye"), Frame.RightEye, false);
    Writer.WriteObjectEnd();
    return Finish(Writer, Json);
}

std::string AudioEventJson(const FViewAudio& Audio)
{
    FString Json;
    FEventWriter Writer(&Json);
    Writer.WriteObjectStart();
    Writer.WriteValue(TEXT("type"), TEXT("audio"));
    Writer.WriteValue(TEXT("stream"), Audio.Stream);
    Writer.WriteValue(TEXT("index"), Audio.FirstSample);
    Writer.WriteValue(TEXT("rate"), Audio.SampleRate);
    Writer.WriteValue(TEXT("arrival"), Audio.ArrivalMs);
    Writer.WriteArrayStart(TEXT("pcm"));
    for (const int16_t Sample : Audio.Samples)
    {
        Writer.WriteValue(static_cast<int32>(Sample));
    }
    Writer.WriteArrayEnd();
    return Finish(Writer, Json);
}

std::string CountsEventJson(const FViewCounts& Counts)
{
    FString Json;
    FEventWriter Writer(&Json);
    Writer.WriteObjectStart();
    Writer.WriteValue(TEXT("type"), TEXT("counts"));
    Writer.WriteValue(TEXT("stream"), Counts.Stream);
    Writer.WriteValue(TEXT("frames"), static_cast<int64>(Counts.Frames));
    Writer.WriteValue(TEXT("missing"), static_cast<int64>(Counts.MissingFrames));
    Writer.WriteValue(TEXT("outOfOrder"), static_cast<int64>(Counts.OutOfOrderFrames));
    Writer.WriteValue(TEXT("audioBlocks"), static_cast<int64>(Counts.AudioBlocks));
    Writer.WriteValue(TEXT("malformed"), static_cast<int64>(Counts.Malformed));
    Writer.WriteValue(TEXT("oversized"), static_cast<int64>(Counts.Oversized));
    Writer.WriteValue(TEXT("foreign"), static_cast<int64>(Counts.Foreign));
    return Finish(Writer, Json);
}
