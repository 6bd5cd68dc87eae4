#include "CadrelJson.h"
#include "JSON/CadrelJsonReadRules.h"

#include "Serialization/JsonSerializer.h"

namespace
{
// Both answers must be objects at the top level; anything else is no answer.
TSharedPtr<FJsonObject> ReadObject(const FString& JsonString)
{
    TSharedPtr<FJsonObject> Object;
    if (!FJsonSerializer::Deserialize(TJsonReaderFactory<TCHAR>::Create(JsonString), Object))
    {
        return nullptr;
    }
    return Object;
}
} // namespace

void CadrelJson::StringToVelkInfo(const FString& JsonString, FCadrelVelkInfo& OutInfo)
{
    ReadRules::ReadWithoutThrowing(
        [&]
        {
            const TSharedPtr<FJsonObject> Object = ReadObject(JsonString);
            if (!Object)
            {
                return;
            }
            OutInfo.VelkHost = Object->GetStringField(TEXT("VelkHost"));
            OutInfo.VelkPort = ReadRules::TruncateToInt32(Object->GetNumberField(TEXT("VelkPort")));
            OutInfo.AudioPort = ReadRules::TruncateToInt32(Object->GetNumberField(TEXT("AudioPort")));
            // The server sends whole units; a fraction is dropped before the value becomes a float.
            OutInfo.AudioTime =
                static_cast<float>(ReadRules::TruncateToInt32(Object->GetNumberField(TEXT("TimeLength"))));
        });
}

void CadrelJson::StringToToken(const FString& JsonString, FString& OutToken)
{
    ReadRules::ReadWithoutThrowing(
        [&]
        {
            if (const TSharedPtr<FJsonObject> Object = ReadObject(JsonString))
            {
                Object->TryGetStringField(TEXT("token"), OutToken);
            }
        });
}
