#include "CadrelJson.h"
#include "JSON/CadrelJsonReadRules.h"
#include "JSON/FastJsonWalk.h"

#include <algorithm>
#include <vector>

namespace
{
using namespace CadrelJson::FastJson;

// An "eul" of three or more numbers; fewer leave the bone without a value.
constexpr int32 EulTriple = 3;

// What the answer holds, gathered during the walk and applied to the caller's
// record only once the whole text has proved valid. A key met again replaces what
// its earlier occurrence gave, as the host's object keeps the later value.
struct FResponseDraft
{
    TArray<FCadrelFaceFrames> Frames;
    // The fewest "eul" numbers of any bone in Frames, capped at a triple.
    int32 ShortestEul = EulTriple;
    TArray<FString> BlendShapesNames;
    TArray<FString> BonesNames;
    FString Version;
    FString Platform;
    double Fps = 0.0;
};

class FResponseWalker
{
public:
    error_code OnTopLevelField(std::string_view Key, ondemand::value Value, int32 Level)
    {
        if (IsKey(Key, "frames"))
        {
            return ReadFrames(Value, Level);
        }
        if (IsKey(Key, "blendshapesnames"))
        {
            return ReadStrings(Value, Level, Draft.BlendShapesNames);
        }
        if (IsKey(Key, "bonesnames"))
        {
            return ReadStrings(Value, Level, Draft.BonesNames);
        }
        if (IsKey(Key, "version"))
        {
            return ReadString(Value, Level, Draft.Version);
        }
        if (IsKey(Key, "fps"))
        {
            return ReadNumber(Value, Level, Draft.Fps);
        }
        if (IsKey(Key, "platform"))
        {
            return ReadString(Value, Level, Draft.Platform);
        }
        return SkipValue(Value, Level);
    }

    // Reserves before moving anything, so that running out of memory here leaves
    // the record untouched rather than half-filled.
    void Apply(FCadrelZELResponse& Out)
    {
        ReserveToAppend(Out.Frames, Draft.Frames);
        ReserveToAppend(Out.BlendShapesNames, Draft.BlendShapesNames);
        ReserveToAppend(Out.BonesNames, Draft.BonesNames);
        AppendMoved(Out.Frames, std::move(Draft.Frames));
        AppendMoved(Out.BlendShapesNames, std::move(Draft.BlendShapesNames));
        AppendMoved(Out.BonesNames, std::move(Draft.BonesNames));
        Out.Version = std::move(Draft.Version);
        Out.FPS = CadrelJson::ReadRules::TruncateToInt32(Draft.Fps);
        Out.Platform = std::move(Draft.Platform);
        if (Draft.ShortestEul < EulTriple)
        {
            CadrelJson::ReadRules::CheckEulTriple(Draft.ShortestEul);
        }
    }

private:
    error_code ReadFrames(ondemand::value Value, int32 Level)
    {
        Draft.Frames.Reset();
        Draft.ShortestEul = EulTriple;
        // Every element adds a frame, objects or not, so that frame positions stay
        // aligned with the answer's list.
        return ForEachElement(Value, Level,
                              [this](ondemand::value Element, int32 ElementLevel) {
                                  return ReadFrame(Element, ElementLevel, Draft.Frames.AddDefaulted_GetRef());
                              });
    }

    error_code ReadFrame(ondemand::value Value, int32 Level, FCadrelFaceFrames& Frame)
    {
        int32 ShortestEul = EulTriple;
        bool bObject = false;
        SIMDJSON_TRY(
            ForObject(Value, Level, bObject,
                      [&](std::string_view Key, ondemand::value Member, int32 MemberLevel) -> error_code
                      {
                          if (IsKey(Key, "blendshapes"))
                          {
                              return ReadNumbers(Member, MemberLevel, Numbers, Scratch, Frame.Blendshapes);
                          }
                          if (IsKey(Key, "bones"))
                          {
                              ShortestEul = EulTriple;
                              return ReadBones(Member, MemberLevel, Frame.Bones, ShortestEul);
                          }
                          return SkipValue(Member, MemberLevel);
                      }));
        Draft.ShortestEul = std::min(Draft.ShortestEul, ShortestEul);
        return simdjson::SUCCESS;
    }

    // Bones gather in a buffer kept across frames, so that each frame's bones are
    // allocated once at their final size.
    error_code ReadBones(ondemand::value Value, int32 Level, TArray<FCadrelZELBones>& OutBones,
                         int32& ShortestEul)
    {
        BonesScratch.clear();
        SIMDJSON_TRY(ForEachElement(Value, Level,
                                    [&](ondemand::value Element, int32 ElementLevel)
                                    { return ReadBone(Element, ElementLevel, ShortestEul); }));
        OutBones = TArray<FCadrelZELBones>(BonesScratch.data(), static_cast<int32>(BonesScratch.size()));
        return simdjson::SUCCESS;
    }

    // A bone counts only when it is an object with an "eul" key, whatever the key holds.
    error_code ReadBone(ondemand::value Value, int32 Level, int32& ShortestEul)
    {
        bool bHasEul = false;
        int32 EulNum = 0;
        double Eul[EulTriple] = {};
        bool bObject = false;
        SIMDJSON_TRY(
            ForObject(Value, Level, bObject,
                      [&](std::string_view Key, ondemand::value Member, int32 MemberLevel) -> error_code
                      {
                          if (!IsKey(Key, "eul"))
                          {
                              return SkipValue(Member, MemberLevel);
                          }
                          bHasEul = true;
                          // Three numbers are read faster one by one than by a list's
                          // reading, whose setting up would cost more than it saves.
                          EulNum = 0;
                          return ForEachElement(Member, MemberLevel,
                                                [&](ondemand::value Element, int32 ElementLevel) -> error_code
                                                {
                                                    double Number = 0.0;
                                                    SIMDJSON_TRY(ReadNumber(Element, ElementLevel, Number));
                                                    if (EulNum < EulTriple)
                                                    {
                                                        Eul[EulNum++] = Number;
                                                    }
                                                    return simdjson::SUCCESS;
                                                });
                      }));
        if (!bObject || !bHasEul)
        {
            return simdjson::SUCCESS;
        }
        FCadrelZELBones& Bone = BonesScratch.emplace_back();
        Bone.BoneName = TEXT("eul");
        if (EulNum == EulTriple)
        {
            Bone.BoneValue = FVector(Eul[0], Eul[1], Eul[2]);
        }
        ShortestEul = std::min(ShortestEul, EulNum);
        return simdjson::SUCCESS;
    }

    error_code ReadStrings(ondemand::value Value, int32 Level, TArray<FString>& OutStrings)
    {
        OutStrings.Reset();
        return ForEachElement(Value, Level,
                              [&](ondemand::value Element, int32 ElementLevel) {
                                  return ReadString(Element, ElementLevel, OutStrings.AddDefaulted_GetRef());
                              });
    }

    FResponseDraft Draft;
    FPlainNumberReader Numbers{FReadWorkspace::Get()};
    std::vector<double> Scratch;
    std::vector<FCadrelZELBones> BonesScratch;
};

} // namespace

void CadrelJson::StringToZELResponse(const FString& JsonString, FCadrelZELResponse& OutResponse)
{
    ReadRules::ReadWithoutThrowing([&] { ReadWithWalker<FResponseWalker>(JsonString.View(), OutResponse); });
}

void CadrelJson::StringToZELResponse(const TArray<uint8>& Utf8Json, FCadrelZELResponse& OutResponse)
{
    ReadRules::ReadWithoutThrowing([&] { ReadWithWalker<FResponseWalker>(Utf8Json, OutResponse); });
}
