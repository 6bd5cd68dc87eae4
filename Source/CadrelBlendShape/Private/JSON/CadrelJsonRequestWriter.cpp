#include "CadrelJson.h"
#include "JSON/CadrelEnumNames.h"

#include "Policies/CondensedJsonPrintPolicy.h"
#include "Serialization/JsonWriter.h"

#include <iterator>

namespace
{
// The server reads the document byte for byte, so it is written without any whitespace.
using FCondensedWriter = TJsonWriter<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;
using FCondensedWriterFactory = TJsonWriterFactory<TCHAR, TCondensedJsonPrintPolicy<TCHAR>>;

// A value outside the enumeration has no name, so it is written as empty text,
// which no server reads as an emotion.
// The server knows the emotions by their enumerator names in lower case.
FString EmotionName(ECadrelExplicitEmotion Emotion)
{
    const SIZE_T Index = static_cast<SIZE_T>(Emotion);
    return Index < std::size(CadrelEnumNames::Emotions) ? FString(CadrelEnumNames::Emotions[Index]).ToLower()
                                                        : FString();
}

// Every rig other than the Vireth one is "custom" to the server, values outside the enumeration included.
const TCHAR* RigTypeName(ECadrelRigType RigType)
{
    return RigType == ECadrelRigType::VIRETH ? TEXT("vireth") : TEXT("custom");
}

const TCHAR* MovementMode(bool bMocap)
{
    return bMocap ? TEXT("mocap") : TEXT("none");
}

void WriteZel(FCondensedWriter& Writer, const FCadrelZELInfo& Zel)
{
    Writer.WriteObjectStart(TEXT("zel"));
    Writer.WriteValue(TEXT("platform"), Zel.Platform);
    Writer.WriteValue(TEXT("rigVersion"), Zel.RigVersion);
    Writer.WriteValue(TEXT("rigType"), RigTypeName(Zel.RigType));
    Writer.WriteValue(TEXT("engine"), Zel.Engine);
    Writer.WriteValue(TEXT("answerFormat"), Zel.AnswerFormat);
    Writer.WriteValue(TEXT("explicitEmotion"), EmotionName(Zel.ExplicitEmotion));
    Writer.WriteObjectStart(TEXT("eyeMovementParameters"));
    Writer.WriteValue(TEXT("eyeMovementMode"), MovementMode(Zel.EyeMovementParameters.bEyeMovementMode));
    Writer.WriteObjectEnd();
    Writer.WriteObjectStart(TEXT("neckMovementParameters"));
    Writer.WriteValue(TEXT("neckMovementMode"), MovementMode(Zel.NeckMovementParameters.bNeckMovementMode));
    Writer.WriteObjectEnd();
    Writer.WriteObjectEnd();
}

void WriteData(FCondensedWriter& Writer, const FCadrelIORequestData& Data)
{
    FString Id;
    Data.ID.AppendString(Id, EGuidFormats::Digits);

    Writer.WriteObjectStart(TEXT("data"));
    Writer.WriteValue(TEXT("id"), Id);
    Writer.WriteValue(TEXT("type"), Data.Type);
    Writer.WriteObjectStart(TEXT("attributes"));
    WriteZel(Writer, Data.Attributes.Zel);
    Writer.WriteObjectEnd();
    Writer.WriteObjectEnd();
}

// The server expects prev_size and latency as quoted numbers but prev_audio_length
// as a bare one, and "OS" in upper case.
void WriteMeta(FCondensedWriter& Writer, const FCadrelIORequestMeta& Meta)
{
    Writer.WriteObjectStart(TEXT("meta"));
    Writer.WriteValue(TEXT("platform"), Meta.Platform);
    Writer.WriteValue(TEXT("platform_version"), Meta.PlatformVersion);
    Writer.WriteValue(TEXT("editor"), Meta.bEditor);
    Writer.WriteValue(TEXT("plugin_version"), Meta.PluginVersion);
    Writer.WriteValue(TEXT("OS"), Meta.OS);
    Writer.WriteValue(TEXT("local"), Meta.Local);
    Writer.WriteValue(TEXT("prev_type"), Meta.PrevType);
    Writer.WriteValue(TEXT("prev_size"), FString::FromInt(Meta.PrevSize));
    Writer.WriteValue(TEXT("latency"), FString::SanitizeFloat(static_cast<double>(Meta.Latency), 1));
    Writer.WriteValue(TEXT("prev_audio_length"), Meta.PrevAudioLength);
    Writer.WriteObjectEnd();
}
} // namespace

void CadrelJson::ZELRequestToString(const FCadrelZELRequest& Request, FString& OutJson)
{
    const TSharedRef<FCondensedWriter> Writer = FCondensedWriterFactory::Create(&OutJson);
    Writer->WriteObjectStart();
    WriteData(*Writer, Request.Data);
    WriteMeta(*Writer, Request.Meta);
    Writer->WriteObjectEnd();
    Writer->Close();
}
