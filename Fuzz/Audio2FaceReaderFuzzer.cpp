#include "CadrelJson.h"

#include <cstring>
#include <string>

// The Audio2Face export reader on hostile bytes, and the conversion of whatever it read.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    FCadrelAudio2FaceBlendShapeInfo Info;
    CadrelJson::StringToAudio2FaceResponse(TArray<uint8>(Data, static_cast<int32>(Size)), Info);
    CadrelJson::StringToAudio2FaceResponse(
        FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Data), Size)), Info);
    std::u16string Units(Size / sizeof(char16_t), u'\0');
    std::memcpy(Units.data(), Data, Units.size() * sizeof(char16_t));
    CadrelJson::StringToAudio2FaceResponse(FString(std::move(Units)), Info);

    FCadrelZELResponse Response;
    Response.Frames.SetNum(Size % 7);
    CadrelJson::Audio2FaceBlendShapeToZELResponse(Info, Response, 2.0);
    return 0;
}
