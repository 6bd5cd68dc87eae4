#include "Audio2FaceExport.h"

#include "CadrelJson.h"

bool ReadAudio2FaceExport(const TArray<uint8>& Bytes, FCadrelAudio2FaceBlendShapeInfo& OutExport)
{
    FCadrelAudio2FaceBlendShapeInfo Export;
    CadrelJson::StringToAudio2FaceResponse(Bytes, Export);
    if (Export.ExportFps == FCadrelAudio2FaceBlendShapeInfo().ExportFps)
    {
        return false;
    }
    OutExport = std::move(Export);
    return true;
}
