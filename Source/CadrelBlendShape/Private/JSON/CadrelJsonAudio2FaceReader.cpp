#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"
#include "JSON/CadrelJsonReadRules.h"

#include "Serialization/JsonSerializer.h"

namespace
{
void ReadExport(const FJsonObject& Object, FCadrelAudio2FaceBlendShapeInfo& Out)
{
    using CadrelJson::ReadRules::TruncateToInt32;
    Out.ExportFps = TruncateToInt32(Object.GetNumberField(TEXT("exportFps")));
    Out.TrackPath = Object.GetStringField(TEXT("trackPath"));
    Out.NumPoses = TruncateToInt32(Object.GetNumberField(TEXT("numPoses")));
    Out.NumFrames = TruncateToInt32(Object.GetNumberField(TEXT("numFrames")));
    if (Object.HasField(TEXT("facsNames")))
    {
        for (const TSharedPtr<FJsonValue>& Name : Object.GetArrayField(TEXT("facsNames")))
        {
            Out.FacsNames.Add(Name->AsString());
        }
    }
    if (Object.HasField(TEXT("weightMat")))
    {
        // A row that is not an array still adds an empty row, so that row r stays frame r.
        for (const TSharedPtr<FJsonValue>& Row : Object.GetArrayField(TEXT("weightMat")))
        {
            FAudio2FaceBlendShapeWeightMat& Weights = Out.WeightMat.AddDefaulted_GetRef();
            for (const TSharedPtr<FJsonValue>& Weight : Row->AsArray())
            {
                Weights.Weight.Add(Weight->AsNumber());
            }
        }
    }
}

// The response's fields besides its frames; Version stays as it was.
void SetExportHeader(const FCadrelAudio2FaceBlendShapeInfo& InInfo, FCadrelZELResponse& OutResponse)
{
    OutResponse.BlendShapesNames = InInfo.FacsNames;
    OutResponse.FPS = InInfo.ExportFps;
    // Callers tell a converted export by this Platform text.
    OutResponse.Platform = TEXT("1.0.0");
}
} // namespace

void CadrelJson::StringToAudio2FaceResponse_Internal(const FString& JsonString,
                                                     FCadrelAudio2FaceBlendShapeInfo& OutInfo)
{
    CadrelJson::ReadRules::ReadRootObject(TJsonReaderFactory<TCHAR>::Create(JsonString),
                                          [&](const FJsonObject& Object) { ReadExport(Object, OutInfo); });
}

void CadrelJson::StringToAudio2FaceResponse_Internal(const TArray<uint8>& Utf8Json,
                                                     FCadrelAudio2FaceBlendShapeInfo& OutInfo)
{
    CadrelJson::ReadRules::ReadRootObject(TJsonReaderFactory<UTF8CHAR>::Create(Utf8Json),
                                          [&](const FJsonObject& Object) { ReadExport(Object, OutInfo); });
}

void CadrelJson::Audio2FaceBlendShapeToZELResponse(const FCadrelAudio2FaceBlendShapeInfo& InInfo,
                                                   FCadrelZELResponse& OutResponse, double WeightScale)
{
    OutResponse.Frames.SetNum(InInfo.WeightMat.Num());
    for (int32 FrameIndex = 0; FrameIndex < InInfo.WeightMat.Num(); ++FrameIndex)
    {
        const TArray<double>& Row = InInfo.WeightMat[FrameIndex].Weight;
        TArray<double>& Weights = OutResponse.Frames[FrameIndex].Blendshapes;
        Weights.SetNum(Row.Num());
        for (int32 Column = 0; Column < Row.Num(); ++Column)
        {
            Weights[Column] = WeightScale * Row[Column];
        }
    }
    SetExportHeader(InInfo, OutResponse);
}

void CadrelJson::Audio2FaceBlendShapeToZELResponse(FCadrelAudio2FaceBlendShapeInfo&& InInfo,
                                                   FCadrelZELResponse& OutResponse, double WeightScale)
{
    OutResponse.Frames.SetNum(InInfo.WeightMat.Num());
    for (int32 FrameIndex = 0; FrameIndex < InInfo.WeightMat.Num(); ++FrameIndex)
    {
        TArray<double>& Weights = OutResponse.Frames[FrameIndex].Blendshapes;
        Weights = std::move(InInfo.WeightMat[FrameIndex].Weight);
        InInfo.WeightMat[FrameIndex].Weight.Empty();
        // Multiplying by 1 changes no weight that JSON can carry.
        if (WeightScale != 1.0)
        {
            for (double& Weight : Weights)
            {
                Weight *= WeightScale;
            }
        }
    }
    SetExportHeader(InInfo, OutResponse);
}
