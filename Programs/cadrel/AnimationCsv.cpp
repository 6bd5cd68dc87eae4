#include "AnimationCsv.h"

#include "NumberTexts.h"
#include "TextOutput.h"

#include <algorithm>
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

char* WriteNumber(char* At, FNumberTexts& Texts, double Value)
{
    return std::isfinite(Value) ? Texts.Write(At, Value) : At;
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

// Cells after the frame number: the time, one per blend shape, three per bone.
SIZE_T CellsPerRow(const FCadrelZELResponse& Animation)
{
    return 1 + Animation.BlendShapesNames.Num() + 3 * SIZE_T(Animation.BonesNames.Num());
}

// A row's room: the frame number, then each cell's comma and longest number.
SIZE_T RowRoom(SIZE_T Cells)
{
    return 16 + LineEnd.size() + Cells * (MaxJsonNumberLength + 1);
}

void AppendRow(FTextOutput& Out, FNumberTexts& Texts, const FCadrelZELResponse& Animation, int32 Index,
               SIZE_T Cells)
{
    const FCadrelFaceFrames& Frame = Animation.Frames[Index];
    char* At = Out.Room(RowRoom(Cells));
    At = std::to_chars(At, At + 16, Index).ptr;
    *At++ = ',';
    if (Animation.FPS > 0)
    {
        // Every frame's time is new: remembered, it would only push out weights that recur.
        At = WriteJsonNumber(At, static_cast<double>(Index) / Animation.FPS);
    }
    // Taken out of the arrays first: every character written could alias them, and
    // their bounds would be loaded again for each cell.
    const int32 Names = Animation.BlendShapesNames.Num();
    const int32 Present = std::min(Names, Frame.Blendshapes.Num());
    const double* const Weights = Frame.Blendshapes.GetData();
    for (int32 Column = 0; Column < Present; ++Column)
    {
        *At++ = ',';
        At = WriteNumber(At, Texts, Weights[Column]);
    }
    for (int32 Column = Present; Column < Names; ++Column)
    {
        *At++ = ',';
    }
    for (int32 Bone = 0; Bone < Animation.BonesNames.Num(); ++Bone)
    {
        if (!Frame.Bones.IsValidIndex(Bone))
        {
            At = WriteAscii(At, ",,,");
            continue;
        }
        const FVector& Value = Frame.Bones[Bone].BoneValue;
        for (const double Component : {Value.X, Value.Y, Value.Z})
        {
            *At++ = ',';
            At = WriteNumber(At, Texts, Component);
        }
    }
    Out.Advance(WriteAscii(At, "\r\n"));
}
} // namespace

void WriteAnimationCsv(const FCadrelZELResponse& Animation, FTextOutput& Out)
{
    const SIZE_T Cells = CellsPerRow(Animation);
    std::string Header;
    AppendHeader(Header, Animation);
    Out.Append(Header);
    FNumberTexts Texts;
    for (int32 Index = 0; Index < Animation.Frames.Num(); ++Index)
    {
        AppendRow(Out, Texts, Animation, Index, Cells);
    }
}

std::string AnimationToCsv(const FCadrelZELResponse& Animation)
{
    // About eight bytes a cell, so a long animation grows its buffer a few times at most.
    FTextOutput Out(1024 + static_cast<SIZE_T>(Animation.Frames.Num()) * CellsPerRow(Animation) * 8);
    WriteAnimationCsv(Animation, Out);
    return std::move(Out).Take();
}
