#pragma once

#include "CadrelBlendShapeType.h"

#include <cstdio>
#include <string>

// The exact text of a record: strings in UTF-8 with their letter case, numbers as
// hexadecimal floats (so -0 and 0 differ), so that two records give the same text
// only when they are identical field for field. FString's own == ignores case.
namespace CadrelRecordText
{
inline void Append(std::string& Out, double Value)
{
    char Buffer[40];
    std::snprintf(Buffer, sizeof(Buffer), "%a ", Value);
    Out += Buffer;
}

inline void Append(std::string& Out, const FString& Text)
{
    Out += '"' + Text.ToUTF8() + "\" ";
}

inline void Append(std::string& Out, const FCadrelZELBones& Bone)
{
    Append(Out, Bone.BoneName);
    for (const double Component : {Bone.BoneValue.X, Bone.BoneValue.Y, Bone.BoneValue.Z})
    {
        Append(Out, Component);
    }
}

template <typename ElementType> void Append(std::string& Out, const TArray<ElementType>& Items)
{
    Out += "[";
    for (const ElementType& Item : Items)
    {
        if constexpr (std::is_same_v<ElementType, FCadrelFaceFrames>)
        {
            Append(Out, Item.Blendshapes);
            Append(Out, Item.Bones);
        }
        else if constexpr (std::is_same_v<ElementType, FAudio2FaceBlendShapeWeightMat>)
        {
            Append(Out, Item.Weight);
        }
        else
        {
            Append(Out, Item);
        }
    }
    Out += "] ";
}

inline std::string Of(const FCadrelZELResponse& Response)
{
    std::string Out = "fps " + std::to_string(Response.FPS) + " ";
    Append(Out, Response.Version);
    Append(Out, Response.Platform);
    Append(Out, Response.Frames);
    Append(Out, Response.BlendShapesNames);
    Append(Out, Response.BonesNames);
    return Out;
}

inline std::string Of(const FCadrelAudio2FaceBlendShapeInfo& Info)
{
    std::string Out = "counts " + std::to_string(Info.ExportFps) + " " + std::to_string(Info.NumPoses) + " " +
                      std::to_string(Info.NumFrames) + " ";
    Append(Out, Info.TrackPath);
    Append(Out, Info.FacsNames);
    Append(Out, Info.WeightMat);
    return Out;
}
} // namespace CadrelRecordText
