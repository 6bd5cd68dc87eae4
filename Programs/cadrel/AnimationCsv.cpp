#include "AnimationCsv.h"

#include <charconv>
#include <cmath>
#include <string_view>

namespace
{
constexpr std::string_view LineEnd = "\r\n";
constexpr const char* Axes[] = {".x", ".y", ".z"};

void AppendField(std::string& Out, std::string_view Field)
{
    if (Field.find_first_of(",\"\r\n") == std::string_view::npos)
    {
        Out += Field;
        return;
    }
    Out += '"';
    for (const char Char : Field)
    {
        Out += Char;
        if (Char == '"')
        {
            Out += '"';
        }
    }
    Out += '"';
}

void AppendNumber(std::string& Out, double Value)
{
    if (!std::isfinite(Value))
    {
        return;
    }
    char Buffer[32];
    const std::to_chars_result Result = std::to_chars(Buffer, Buffer + sizeof(Buffer), Value);
    Out.append(Buffer, Result.ptr);
}

void AppendHeader(std::string& Out, const FCadrelZELResponse& Animation)
{
    Out += "frame,time";
    for (const FString& Name : Animation.BlendShapesNames)
    {
        Out += ',';
        AppendField(Out, Name.ToUTF8());
    }
    for (const FString& Name : Animation.BonesNames)
    {
        const std::string Bone = Name.ToUTF8();
        for (const char* Axis : Axes)
        {
            Out += ',';
            AppendField(Out, Bone + Axis);
        }
    }
    Out += LineEnd;
}

void AppendRow(std::string& Out, const FCadrelZELResponse& Animation, int32 Index)
{
    const FCadrelFaceFrames& Frame = Animation.Frames[Index];
    char Buffer[16];
    Out.append(Buffer, std::to_chars(Buffer, Buffer + sizeof(Buffer), Index).ptr);
    Out += ',';
    if (Animation.FPS > 0)
    {
        AppendNumber(Out, static_cast<double>(Index) / Animation.FPS);
    }
    for (int32 Column = 0; Column < Animation.BlendShapesNames.Num(); ++Column)
    {
        Out += ',';
        if (Frame.Blendshapes.IsValidIndex(Column))
        {
            AppendNumber(Out, Frame.Blendshapes[Column]);
        }
    }
    for (int32 Bone = 0; Bone < Animation.BonesNames.Num(); ++Bone)
    {
        if (!Frame.Bones.IsValidIndex(Bone))
        {
            Out += ",,,";
            continue;
        }
        const FVector& Value = Frame.Bones[Bone].BoneValue;
        for (const double Component : {Value.X, Value.Y, Value.Z})
        {
            Out += ',';
            AppendNumber(Out, Component);
        }
    }
    Out += LineEnd;
}
} // namespace

std::string AnimationToCsv(const FCadrelZELResponse& Animation)
{
    std::string Csv;
    // About eight bytes a cell, so a long animation grows its buffer a few times at most.
    const std::size_t CellsPerRow = 2 + Animation.BlendShapesNames.Num() + 3 * Animation.BonesNames.Num();
    Csv.reserve(64 + static_cast<std::size_t>(Animation.Frames.Num() + 1) * CellsPerRow * 8);
    AppendHeader(Csv, Animation);
    for (int32 Index = 0; Index < Animation.Frames.Num(); ++Index)
    {
        AppendRow(Csv, Animation, Index);
    }
    return Csv;
}
