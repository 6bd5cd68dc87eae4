#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"
#include "JSON/CadrelJsonReadRules.h"

#include "Serialization/JsonSerializer.h"

namespace
{
using FJsonValues = TArray<TSharedPtr<FJsonValue>>;

void ReadBones(const FJsonValues& Bones, FCadrelFaceFrames& Frame)
{
    for (const TSharedPtr<FJsonValue>& Element : Bones)
    {
        const TSharedPtr<FJsonObject>& Bone = Element->AsObject();
        if (!Bone || !Bone->HasField(TEXT("eul")))
        {
            continue;
        }
        FCadrelZELBones& Record = Frame.Bones.AddDefaulted_GetRef();
        Record.BoneName = TEXT("eul");
        const FJsonValues& Eul = Bone->GetArrayField(TEXT("eul"));
        if (CadrelJson::ReadRules::CheckEulTriple(Eul.Num()))
        {
            Record.BoneValue = FVector(Eul[0]->AsNumber(), Eul[1]->AsNumber(), Eul[2]->AsNumber());
        }
    }
}

void ReadFrame(const FJsonObject& Object, FCadrelFaceFrames& Frame)
{
    if (Object.HasField(TEXT("blendshapes")))
    {
        for (const TSharedPtr<FJsonValue>& Weight : Object.GetArrayField(TEXT("blendshapes")))
        {
            Frame.Blendshapes.Add(Weight->AsNumber());
        }
    }
    if (Object.HasField(TEXT("bones")))
    {
        ReadBones(Object.GetArrayField(TEXT("bones")), Frame);
    }
}

void AppendStrings(const FJsonObject& Object, const TCHAR* Key, TArray<FString>& Out)
{
    if (!Object.HasField(Key))
    {
        return;
    }
    for (const TSharedPtr<FJsonValue>& Name : Object.GetArrayField(Key))
    {
        Out.Add(Name->AsString());
    }
}

void ReadResponse(const FJsonObject& Object, FCadrelZELResponse& Out)
{
    // Every element adds a frame, objects or not, so that frame positions stay
    // aligned with the answer's list.
    for (const TSharedPtr<FJsonValue>& Element : Object.GetArrayField(TEXT("frames")))
    {
        FCadrelFaceFrames& Frame = Out.Frames.AddDefaulted_GetRef();
        if (const TSharedPtr<FJsonObject>& FrameObject = Element->AsObject())
        {
            ReadFrame(*FrameObject, Frame);
        }
    }
    AppendStrings(Object, TEXT("blendShapesNames"), Out.BlendShapesNames);
    AppendStrings(Object, TEXT("bonesNames"), Out.BonesNames);
    Out.Version = Object.GetStringField(TEXT("version"));
    Out.FPS = CadrelJson::ReadRules::TruncateToInt32(Object.GetNumberField(TEXT("fps")));
    Out.Platform = Object.GetStringField(TEXT("platform"));
}

} // namespace

void CadrelJson::StringToZELResponse_Internal(const FString& JsonString, FCadrelZELResponse& OutResponse)
{
    CadrelJson::ReadRules::ReadRootObject(TJsonReaderFactory<TCHAR>::Create(JsonString),
                                          [&](const FJsonObject& Object)
                                          { ReadResponse(Object, OutResponse); });
}

void CadrelJson::StringToZELResponse_Internal(const TArray<uint8>& Utf8Json, FCadrelZELResponse& OutResponse)
{
    CadrelJson::ReadRules::ReadRootObject(TJsonReaderFactory<UTF8CHAR>::Create(Utf8Json),
                                          [&](const FJsonObject& Object)
                                          { ReadResponse(Object, OutResponse); });
}
