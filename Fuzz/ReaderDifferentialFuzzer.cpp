#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"
#include "RecordText.h"

#include <simdjson.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

// Holds the fast readers to the general path over the host's JSON tree: from the
// same text, both must leave byte-identical records, or both leave them unchanged.
namespace
{
// Records that already hold something, so that "left unchanged" and "appended to"
// are checked along with what is read.
FCadrelZELResponse StartResponse()
{
    FCadrelZELResponse Response;
    Response.Version = TEXT("old");
    Response.FPS = 7;
    Response.Frames.AddDefaulted();
    Response.BlendShapesNames.Add(TEXT("old"));
    return Response;
}

FCadrelAudio2FaceBlendShapeInfo StartExport()
{
    FCadrelAudio2FaceBlendShapeInfo Info;
    Info.TrackPath = TEXT("old");
    Info.WeightMat.AddDefaulted();
    Info.FacsNames.Add(TEXT("old"));
    return Info;
}

void Require(const std::string& Fast, const std::string& General, const char* What)
{
    if (Fast != General)
    {
        std::fprintf(stderr, "%s differs\nfast:    %s\ngeneral: %s\n", What, Fast.c_str(), General.c_str());
        std::abort();
    }
}

template <typename InputType> void Compare(const InputType& Input, const char* What)
{
    FCadrelZELResponse Fast = StartResponse();
    FCadrelZELResponse General = StartResponse();
    CadrelJson::StringToZELResponse(Input, Fast);
    CadrelJson::StringToZELResponse_Internal(Input, General);
    Require(CadrelRecordText::Of(Fast), CadrelRecordText::Of(General), What);

    FCadrelAudio2FaceBlendShapeInfo FastExport = StartExport();
    FCadrelAudio2FaceBlendShapeInfo GeneralExport = StartExport();
    CadrelJson::StringToAudio2FaceResponse(Input, FastExport);
    CadrelJson::StringToAudio2FaceResponse_Internal(Input, GeneralExport);
    Require(CadrelRecordText::Of(FastExport), CadrelRecordText::Of(GeneralExport), What);
}

// Bytes with just the parser's room behind them are read where they lie. The room
// continues a list of numbers to the very end of the allocation, so a read that
// does not stop at the end of the text runs out of it.
TArray<uint8> BytesWithRoom(const uint8_t* Data, size_t Size)
{
    constexpr char Room[] = "0.5,";
    TArray<uint8> Bytes;
    Bytes.Reserve(static_cast<int32>(Size + simdjson::SIMDJSON_PADDING));
    Bytes.Append(Data, static_cast<int32>(Size));
    for (SIZE_T Index = 0; Index < simdjson::SIMDJSON_PADDING; ++Index)
    {
        Bytes.Add(static_cast<uint8>(Room[Index % (sizeof(Room) - 1)]));
    }
    Bytes.SetNum(static_cast<int32>(Size));
    return Bytes;
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    Compare(TArray<uint8>(Data, static_cast<int32>(Size)), "UTF-8 bytes");
    Compare(BytesWithRoom(Data, Size), "UTF-8 bytes with room");
    Compare(FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Data), Size)), "text");
    // The same bytes read as UTF-16 units reach lone surrogates in host text.
    std::u16string Units(Size / sizeof(char16_t), u'\0');
    std::memcpy(Units.data(), Data, Units.size() * sizeof(char16_t));
    Compare(FString(std::move(Units)), "UTF-16 text");
    return 0;
}
