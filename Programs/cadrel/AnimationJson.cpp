#include "AnimationJson.h"

#include "Serialization/JsonWriter.h"

namespace
{
using FAnimationWriter = TJsonWriter<>;

void WriteNames(FAnimationWriter& Writer, const FString& Key, const TArray<FString>& Names)
{
    Writer.WriteArrayStart(Key);
    for (const FString& Name : Names)
    {
        Writer.WriteValue(Name);
    }
    Writer.WriteArrayEnd();
}

void WriteFrame(FAnimationWriter& Writer, const FCadrelFaceFrames& Frame)
{
    Writer.WriteObjectStart();
    Writer.WriteArrayStart(TEXT("blendshapes"));
    for (const double Weight : Frame.Blendshapes)
    {
        Writer.WriteValue(Weight);
    }
    Writer.WriteArrayEnd();
    Writer.WriteArrayStart(TEXT("bones"));
    for (const FCadrelZELBones& Bone : Frame.Bones)
    {
        Writer.WriteObjectStart();
        Writer.WriteArrayStart(TEXT("eul"));
        Writer.WriteValue(Bone.BoneValue.X);
        Writer.WriteValue(Bone.BoneValue.Y);
        Writer.WriteValue(Bone.BoneValue.Z);
        Writer.WriteArrayEnd();
        Writer.WriteObjectEnd();
    }
    Writer.WriteArrayEnd();
    Writer.WriteObjectEnd();
}
} // namespace

std::string AnimationToJson(const FCadrelZELResponse& Animation)
{
    FString Json;
    FAnimationWriter Writer(&Json);
    Writer.WriteObjectStart();
    Writer.WriteValue(TEXT("version"), Animation.Version);
    Writer.WriteValue(TEXT("platform"), Animation.Platform);
    Writer.WriteValue(TEXT("fps"), Animation.FPS);
    // Names first: a reader skimming the file sees what the columns are before the numbers.
    WriteNames(Writer, TEXT("blendShapesNames"), Animation.BlendShapesNames);
    WriteNames(Writer, TEXT("bonesNames"), Animation.BonesNames);
    Writer.WriteArrayStart(TEXT("frames"));
    for (const FCadrelFaceFrames& Frame : Animation.Frames)
    {
        WriteFrame(Writer, Frame);
    }
    Writer.WriteArrayEnd();
    Writer.WriteObjectEnd();
    Writer.Close();
    return Json.ToUTF8();
}
