#include "ServerTestSupport.h"

#include "CadrelJson.h"

std::string RequestDocument(const FCadrelZELRequest& Request)
{
    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    return Json.ToUTF8();
}

httplib::Headers ModuleHeaders(std::size_t AudioSize, int Index, int MainIndex, bool bStream)
{
    return {{"Accept-Encoding", "utf-8"},
            {"ZELGuid", "0123456789ABCDEF0123456789ABCDEF"},
            {"ZELIndex", std::to_string(Index)},
            {"ZELMainIndex", std::to_string(MainIndex)},
            {"RequestType", "VIRETHIO"},
            {"bStream", bStream ? "1" : "0"},
            {"AudioSize", std::to_string(AudioSize)}};
}

FCadrelZELResponse ReadCloudAnswer(const std::string& Body)
{
    FCadrelZELResponse Response;
    CadrelJson::StringToZELResponse(FString::FromUTF8(Body), Response);
    return Response;
}

FCadrelAudio2FaceBlendShapeInfo ReadAudio2FaceExport(const std::string& Body)
{
    FCadrelAudio2FaceBlendShapeInfo Export;
    CadrelJson::StringToAudio2FaceResponse(FString::FromUTF8(Body), Export);
    return Export;
}

FCadrelVelkInfo ReadVelkInfo(const std::string& Body)
{
    FCadrelVelkInfo Info;
    CadrelJson::StringToVelkInfo(FString::FromUTF8(Body), Info);
    return Info;
}
