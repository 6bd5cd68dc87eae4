#include "CadrelJson.h"
#include "JSON/CadrelJsonReadRules.h"
#include "JSON/FastJsonWalk.h"

#include <vector>

namespace
{
using namespace CadrelJson::FastJson;

// What the export holds, gathered during the walk and applied to the caller's
// record only once the whole text has proved valid. A key met again replaces what
// its earlier occurrence gave, as the host's object keeps the later value.
struct FExportDraft
{
    double ExportFps = 0.0;
    FString TrackPath;
    double NumPoses = 0.0;
    double NumFrames = 0.0;
    TArray<FString> FacsNames;
    TArray<FAudio2FaceBlendShapeWeightMat> WeightMat;
};

class FExportWalker
{
public:
    error_code OnTopLevelField(std::string_view Key, ondemand::value Value, int32 Level)
    {
        if (IsKey(Key, "exportfps"))
        {
            return ReadNumber(Value, Level, Draft.ExportFps);
        }
        if (IsKey(Key, "trackpath"))
        {
            return ReadString(Value, Level, Draft.TrackPath);
        }
        if (IsKey(Key, "numposes"))
        {
            return ReadNumber(Value, Level, Draft.NumPoses);
        }
        if (IsKey(Key, "numframes"))
        {
            return ReadNumber(Value, Level, Draft.NumFrames);
        }
        if (IsKey(Key, "facsnames"))
        {
            return ReadFacsNames(Value, Level);
        }
        if (IsKey(Key, "weightmat"))
        {
            return ReadWeightMat(Value, Level);
        }
        return SkipValue(Value, Level);
    }

    // Reserves before moving anything, so that running out of memory here leaves
    // the record untouched rather than half-filled.
    void Apply(FCadrelAudio2FaceBlendShapeInfo& Out)
    {
        using CadrelJson::ReadRules::TruncateToInt32;
        ReserveToAppend(Out.FacsNames, Draft.FacsNames);
        ReserveToAppend(Out.WeightMat, Draft.WeightMat);
        Out.ExportFps = TruncateToInt32(Draft.ExportFps);
        Out.TrackPath = std::move(Draft.TrackPath);
        Out.NumPoses = TruncateToInt32(Draft.NumPoses);
        Out.NumFrames = TruncateToInt32(Draft.NumFrames);
        AppendMoved(Out.FacsNames, std::move(Draft.FacsNames));
        AppendMoved(Out.WeightMat, std::move(Draft.WeightMat));
    }

private:
    error_code ReadFacsNames(ondemand::value Value, int32 Level)
    {
        Draft.FacsNames.Reset();
        return ForEachElement(
            Value, Level,
            [this](ondemand::value Element, int32 ElementLevel)
            { return ReadString(Element, ElementLevel, Draft.FacsNames.AddDefaulted_GetRef()); });
    }

    // A row that is not an array still adds an empty row, so that row r stays frame r.
    error_code ReadWeightMat(ondemand::value Value, int32 Level)
    {
        Draft.WeightMat.Reset();
        return ForEachElement(Value, Level,
                              [this](ondemand::value Row, int32 RowLevel) {
                                  return ReadNumbers(Row, RowLevel, Numbers, Scratch,
                                                     Draft.WeightMat.AddDefaulted_GetRef().Weight);
                              });
    }

    FExportDraft Draft;
    FPlainNumberReader Numbers{FReadWorkspace::Get()};
    // Kept across rows, so that each row's weights are allocated once at their final size.
    std::vector<double> Scratch;
};

} // namespace

void CadrelJson::StringToAudio2FaceResponse(const FString& JsonString,
                                            FCadrelAudio2FaceBlendShapeInfo& OutInfo)
{
    ReadRules::ReadWithoutThrowing([&] { ReadWithWalker<FExportWalker>(JsonString.View(), OutInfo); });
}

void CadrelJson::StringToAudio2FaceResponse(const TArray<uint8>& Utf8Json,
                                            FCadrelAudio2FaceBlendShapeInfo& OutInfo)
{
    ReadRules::ReadWithoutThrowing([&] { ReadWithWalker<FExportWalker>(Utf8Json, OutInfo); });
}
