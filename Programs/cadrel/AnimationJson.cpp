#include "AnimationJson.h"

#include "NumberTexts.h"
#include "TextOutput.h"

#include <charconv>
#include <cmath>

namespace
{
// The most characters a frame needs besides its numbers.
constexpr SIZE_T FrameFraming = 64;
constexpr SIZE_T BoneFraming = 16;
// A frame of 52 weights of about six characters, and three bones.
constexpr SIZE_T ExpectedBytesPerFrame = 512;

// Writes the UTF-8 text straight into one buffer: brackets and keys as whole runs,
// each number as one remembered text.
class FAnimationJsonWriter
{
public:
    explicit FAnimationJsonWriter(FTextOutput& InOut) : Out(InOut) {}

    void Header(const FCadrelZELResponse& Animation)
    {
        std::string Text = "{\"version\":";
        AppendEscapedJsonString(Text, Animation.Version.ToUTF8());
        Text += ",\"platform\":";
        AppendEscapedJsonString(Text, Animation.Platform.ToUTF8());
        Text += ",\"fps\":";
        char Digits[16];
        Text.append(Digits, std::to_chars(Digits, Digits + sizeof(Digits), Animation.FPS).ptr);
        // Names first: a reader skimming the file sees what the columns are before the numbers.
        Text += ",\"blendShapesNames\":";
        AppendNames(Text, Animation.BlendShapesNames);
        Text += ",\"bonesNames\":";
        AppendNames(Text, Animation.BonesNames);
        Text += ",\"frames\":[";
        Out.Append(Text);
    }

    void Frame(const FCadrelFaceFrames& Frame, bool bFirst)
    {
        const TArray<double>& Weights = Frame.Blendshapes;
        char* At = Out.Room(FrameFraming + NumbersRoom(Weights.Num()));
        At = bFirst ? WriteAscii(At, "{\"blendshapes\":") : WriteAscii(At, ",{\"blendshapes\":");
        At = WriteNumbers(At, Weights.GetData(), Weights.Num());
        At = WriteAscii(At, ",\"bones\":[");
        Out.Advance(At);
        for (int32 Index = 0; Index < Frame.Bones.Num(); ++Index)
        {
            const FVector& Value = Frame.Bones[Index].BoneValue;
            const double Eul[] = {Value.X, Value.Y, Value.Z};
            At = Out.Room(BoneFraming + NumbersRoom(3));
            At = Index ? WriteAscii(At, ",{\"eul\":") : WriteAscii(At, "{\"eul\":");
            At = WriteNumbers(At, Eul, 3);
            *At++ = '}';
            Out.Advance(At);
        }
        Out.Append("]}");
    }

    void Finish() { Out.Append("]}"); }

private:
    static void AppendNames(std::string& Text, const TArray<FString>& Names)
    {
        Text += '[';
        for (int32 Index = 0; Index < Names.Num(); ++Index)
        {
            if (Index)
            {
                Text += ',';
            }
            AppendEscapedJsonString(Text, Names[Index].ToUTF8());
        }
        Text += ']';
    }

    static SIZE_T NumbersRoom(int32 Count)
    {
        return 2 + static_cast<SIZE_T>(Count) * (MaxJsonNumberLength + 1);
    }

    char* WriteNumbers(char* At, const double* Values, int32 Count)
    {
        *At++ = '[';
        for (int32 Index = 0; Index < Count; ++Index)
        {
            *At = ',';
            At = WriteNumber(At + (Index ? 1 : 0), Values[Index]);
        }
        *At++ = ']';
        return At;
    }

    char* WriteNumber(char* At, double Value)
    {
        // JSON has no NaN or infinity.
        return std::isfinite(Value) ? Texts.Write(At, Value) : WriteAscii(At, "null");
    }

    FTextOutput& Out;
    FNumberTexts Texts;
};
} // namespace

void WriteAnimationJson(const FCadrelZELResponse& Animation, FTextOutput& Out)
{
    FAnimationJsonWriter Writer(Out);
    Writer.Header(Animation);
    for (int32 Index = 0; Index < Animation.Frames.Num(); ++Index)
    {
        Writer.Frame(Animation.Frames[Index], Index == 0);
    }
    Writer.Finish();
}

std::string AnimationToJson(const FCadrelZELResponse& Animation)
{
    FTextOutput Out(1024 + static_cast<SIZE_T>(Animation.Frames.Num()) * ExpectedBytesPerFrame);
    WriteAnimationJson(Animation, Out);
    return std::move(Out).Take();
}
