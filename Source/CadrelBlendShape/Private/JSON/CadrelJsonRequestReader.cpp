#include "CadrelJson.h"
#include "JSON/CadrelJsonReadRules.h"

#include "Serialization/JsonSerializer.h"

namespace
{
// Only the exact word "none" switches movement off; "None" or an absent key ask for
// captured movement, as the server reads them.
bool IsMocap(const FJsonObject& Parameters, const TCHAR* Key)
{
    return !Parameters.GetStringField(Key).Equals(TEXT("none"), ESearchCase::CaseSensitive);
}

void ReadZel(const FJsonObject& Object, FCadrelZELInfo& Zel)
{
    Zel.Platform = Object.GetStringField(TEXT("platform"));
    Zel.RigVersion = Object.GetStringField(TEXT("rigVersion"));
    Zel.RigType = CadrelJson::GetRigType(Object.GetStringField(TEXT("rigType")));
    Zel.Engine = Object.GetStringField(TEXT("engine"));
    Zel.AnswerFormat = Object.GetStringField(TEXT("answerFormat"));
    Zel.ExplicitEmotion = CadrelJson::GetExplicitEmotion(Object.GetStringField(TEXT("explicitEmotion")));
    if (const TSharedPtr<FJsonObject>& Eye = Object.GetObjectField(TEXT("eyeMovementParameters")))
    {
        Zel.EyeMovementParameters.bEyeMovementMode = IsMocap(*Eye, TEXT("eyeMovementMode"));
    }
    if (const TSharedPtr<FJsonObject>& Neck = Object.GetObjectField(TEXT("neckMovementParameters")))
    {
        Zel.NeckMovementParameters.bNeckMovementMode = IsMocap(*Neck, TEXT("neckMovementMode"));
    }
}

void ReadData(const FJsonObject& Object, FCadrelIORequestData& Data)
{
    // A text that is no identifier leaves the invalid identifier, never a stale one.
    FGuid::Parse(Object.GetStringField(TEXT("id")), Data.ID);
    Data.Type = Object.GetStringField(TEXT("type"));
    const TSharedPtr<FJsonObject>& Attributes = Object.GetObjectField(TEXT("attributes"));
    if (!Attributes)
    {
        return;
    }
    if (const TSharedPtr<FJsonObject>& Zel = Attributes->GetObjectField(TEXT("zel")))
    {
        ReadZel(*Zel, Data.Attributes.Zel);
    }
}

void ReadMeta(const FJsonObject& Object, FCadrelIORequestMeta& Meta)
{
    using namespace CadrelJson::ReadRules;
    Meta.Platform = Object.GetStringField(TEXT("platform"));
    Meta.PlatformVersion = Object.GetStringField(TEXT("platform_version"));
    Meta.PluginVersion = Object.GetStringField(TEXT("plugin_version"));
    Meta.OS = Object.GetStringField(TEXT("OS"));
    Meta.Local = Object.GetStringField(TEXT("local"));
    Meta.PrevType = Object.GetStringField(TEXT("prev_type"));
    // The writer quotes prev_size and latency; the host's number accessor reads a
    // string that holds one JSON number as that number, so they read back whole.
    Meta.PrevSize = TruncateToInt32(Object.GetNumberField(TEXT("prev_size")));
    Meta.Latency = NarrowToFloat(Object.GetNumberField(TEXT("latency")));
    Meta.PrevAudioLength = TruncateToInt32(Object.GetNumberField(TEXT("prev_audio_length")));
    // "editor" is read only when present, so that a written request reads back whole
    // while an older document without it keeps the field. A present value that is
    // not a boolean reads as false, as every other mistyped key reads as its
    // accessor's fallback.
    if (Object.HasField(TEXT("editor")))
    {
        Meta.bEditor = Object.GetBoolField(TEXT("editor"));
    }
}
} // namespace

void CadrelJson::StringToZELRequest(const FString& JsonString, FCadrelZELRequest& OutRequest)
{
    ReadRules::ReadRootObject(
        TJsonReaderFactory<TCHAR>::Create(JsonString),
        [&](const FJsonObject& Object)
        {
            if (const TSharedPtr<FJsonObject>& Data = Object.GetObjectField(TEXT("data")))
            {
                ReadData(*Data, OutRequest.Data);
            }
            if (const TSharedPtr<FJsonObject>& Meta = Object.GetObjectField(TEXT("meta")))
            {
                ReadMeta(*Meta, OutRequest.Meta);
            }
        });
}
