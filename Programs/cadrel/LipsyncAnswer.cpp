#include "LipsyncAnswer.h"

#include "Audio2FaceExport.h"
#include "CadrelJson.h"
#include "Dom/JsonObject.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"

namespace
{
constexpr int32 MaxQuotedBytes = 120;

// The server's own words for a refusal: our servers answer {"error":{"field","message"}}.
std::string DescribeRefusal(const TArray<uint8>& Body)
{
    TSharedPtr<FJsonObject> Root;
    if (FJsonSerializer::Deserialize(TJsonReaderFactory<UTF8CHAR>::Create(Body), Root) && Root.IsValid())
    {
        const TSharedPtr<FJsonObject>* Error = nullptr;
        if (Root->TryGetObjectField(TEXT("error"), Error) && Error && Error->IsValid())
        {
            FString Message;
            FString Field;
            (*Error)->TryGetStringField(TEXT("message"), Message);
            (*Error)->TryGetStringField(TEXT("field"), Field);
            if (!Message.IsEmpty())
            {
                return Message.ToUTF8() + (Field.IsEmpty() ? "" : " (field \"" + Field.ToUTF8() + "\")");
            }
        }
    }
    // Otherwise the start of the body, on one line and printable.
    std::string Quoted;
    for (int32 Index = 0; Index < Body.Num() && Index < MaxQuotedBytes; ++Index)
    {
        const char Byte = static_cast<char>(Body[Index]);
        Quoted += (Byte >= 0x20 && Byte < 0x7f) ? Byte : ' ';
    }
    return Quoted.empty() ? "an empty body" : "\"" + Quoted + (Body.Num() > MaxQuotedBytes ? "…\"" : "\"");
}

bool ReadExport(const TArray<uint8>& Body, FCadrelZELResponse& OutAnimation)
{
    FCadrelAudio2FaceBlendShapeInfo Export;
    if (!ReadAudio2FaceExport(Body, Export))
    {
        return false;
    }
    CadrelJson::Audio2FaceBlendShapeToZELResponse(Export, OutAnimation, 1.0);
    return true;
}
} // namespace

bool ReadAnswer(const IHttpResponse& Response, EAnswerFormat Format, FCadrelZELResponse& OutAnimation,
                std::string& OutError)
{
    const std::string URL = Response.GetURL().ToUTF8();
    const int32 Status = Response.GetResponseCode();
    if (Status < 200 || Status > 299)
    {
        OutError =
            URL + " answered " + std::to_string(Status) + ": " + DescribeRefusal(Response.GetContent());
        return false;
    }
    FCadrelZELResponse Animation;
    bool bRead = false;
    if (Format == EAnswerFormat::Audio2Face)
    {
        bRead = ReadExport(Response.GetContent(), Animation);
    }
    else
    {
        CadrelJson::StringToZELResponse(Response.GetContent(), Animation);
        bRead = Animation.FPS != FCadrelZELResponse().FPS;
    }
    if (!bRead)
    {
        OutError = URL + " answered with " + DescribeRefusal(Response.GetContent()) + ", which is not " +
                   (Format == EAnswerFormat::Audio2Face ? "an Audio2Face export" : "a lipsync answer");
        return false;
    }
    if (Animation.Frames.Num() == 0 || Animation.FPS <= 0)
    {
        OutError = URL + " answered with an animation of " + std::to_string(Animation.Frames.Num()) +
                   " frames at " + std::to_string(Animation.FPS) + " fps";
        return false;
    }
    OutAnimation = std::move(Animation);
    return true;
}
