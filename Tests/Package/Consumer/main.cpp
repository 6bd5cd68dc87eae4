// A program outside the tree, built against the installed package only.
#include "CadrelBlendShapeType.h"
#include "CadrelJson.h"
#include "CoreMinimal.h"
#include "Dom/JsonObject.h"
#include "Dom/JsonValue.h"
#include "Serialization/JsonReader.h"
#include "Serialization/JsonSerializer.h"
#include "Serialization/JsonWriter.h"

#include <cstdio>

int main()
{
    FCadrelZELRequest Request;
    Request.Data.Attributes.Zel.ExplicitEmotion = ECadrelExplicitEmotion::CEE_Happy;
    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);

    TSharedPtr<FJsonObject> Parsed;
    if (!FJsonSerializer::Deserialize(TJsonReaderFactory<>::Create(Json), Parsed) || !Parsed.IsValid())
    {
        return 1;
    }
    const FString Emotion = Parsed->GetObjectField(TEXT("data"))
                                ->GetObjectField(TEXT("attributes"))
                                ->GetObjectField(TEXT("zel"))
                                ->GetStringField(TEXT("explicitEmotion"));
    std::printf("%s\n", TCHAR_TO_UTF8(*Json));
    return Emotion.Equals(TEXT("happy"), ESearchCase::CaseSensitive) ? 0 : 2;
}
