#include "AnimationCsv.h"
#include "AnimationJson.h"
#include "AnimationSvg.h"
#include "CadrelJson.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// The program's JSON, CSV and SVG writers on hostile records: any number (huge, NaN,
// infinite, negative zero), names with quotes, commas, line breaks and lone UTF-16
// surrogates, frames shorter or longer than the names, no frames at all. The tables
// are also sent in chunks of any size, as they go to files, and must not change.
namespace
{
constexpr int MaxNames = 8;
constexpr int MaxFrames = 48;
constexpr int MaxSamples = 4096;

void Check(bool bHolds)
{
    if (!bHolds)
    {
        std::abort();
    }
}

// Raw bits half the time, so that NaNs, infinities and denormals come up often.
double HostileDouble(FuzzedDataProvider& Bytes)
{
    if (Bytes.ConsumeBool())
    {
        return Bytes.ConsumeFloatingPoint<double>();
    }
    const uint64_t Bits = Bytes.ConsumeIntegral<uint64_t>();
    double Value = 0.0;
    std::memcpy(&Value, &Bits, sizeof(Value));
    return Value;
}

FString HostileName(FuzzedDataProvider& Bytes)
{
    std::u16string Units;
    const int Length = Bytes.ConsumeIntegralInRange<int>(0, 12);
    for (int Index = 0; Index < Length; ++Index)
    {
        Units += static_cast<char16_t>(Bytes.ConsumeIntegral<uint16_t>());
    }
    return FString(std::move(Units));
}

FCadrelZELResponse HostileAnimation(FuzzedDataProvider& Bytes)
{
    FCadrelZELResponse Animation;
    Animation.FPS = Bytes.ConsumeIntegral<int32>();
    for (int Index = Bytes.ConsumeIntegralInRange<int>(0, MaxNames); Index > 0; --Index)
    {
        Animation.BlendShapesNames.Add(HostileName(Bytes));
    }
    for (int Index = Bytes.ConsumeIntegralInRange<int>(0, MaxNames); Index > 0; --Index)
    {
        Animation.BonesNames.Add(HostileName(Bytes));
    }
    for (int Frame = Bytes.ConsumeIntegralInRange<int>(0, MaxFrames); Frame > 0; --Frame)
    {
        FCadrelFaceFrames& Made = Animation.Frames.AddDefaulted_GetRef();
        for (int Index = Bytes.ConsumeIntegralInRange<int>(0, MaxNames + 2); Index > 0; --Index)
        {
            Made.Blendshapes.Add(HostileDouble(Bytes));
        }
        for (int Index = Bytes.ConsumeIntegralInRange<int>(0, MaxNames + 2); Index > 0; --Index)
        {
            FCadrelZELBones& Bone = Made.Bones.AddDefaulted_GetRef();
            Bone.BoneValue = FVector(HostileDouble(Bytes), HostileDouble(Bytes), HostileDouble(Bytes));
        }
    }
    return Animation;
}

// Not finite becomes null, and null reads as 0.
bool SameNumber(double Written, double Read)
{
    return std::isfinite(Written) ? Written == Read : Read == 0.0;
}

void CheckJson(const FCadrelZELResponse& Animation)
{
    const std::string Json = AnimationToJson(Animation);
    FCadrelZELResponse Read;
    CadrelJson::StringToZELResponse(
        TArray<uint8>(reinterpret_cast<const uint8*>(Json.data()), static_cast<int32>(Json.size())), Read);
    Check(Read.FPS == Animation.FPS && Read.Frames.Num() == Animation.Frames.Num());
    Check(Read.BlendShapesNames.Num() == Animation.BlendShapesNames.Num());
    Check(Read.BonesNames.Num() == Animation.BonesNames.Num());
    for (int32 Index = 0; Index < Animation.BlendShapesNames.Num(); ++Index)
    {
        Check(Read.BlendShapesNames[Index].ToUTF8() == Animation.BlendShapesNames[Index].ToUTF8());
    }
    for (int32 Frame = 0; Frame < Animation.Frames.Num(); ++Frame)
    {
        const FCadrelFaceFrames& Written = Animation.Frames[Frame];
        const FCadrelFaceFrames& Back = Read.Frames[Frame];
        Check(Back.Blendshapes.Num() == Written.Blendshapes.Num() && Back.Bones.Num() == Written.Bones.Num());
        for (int32 Index = 0; Index < Written.Blendshapes.Num(); ++Index)
        {
            Check(SameNumber(Written.Blendshapes[Index], Back.Blendshapes[Index]));
        }
        for (int32 Index = 0; Index < Written.Bones.Num(); ++Index)
        {
            // A bone with a value that is not finite keeps its place, whatever it reads as.
            const FVector& Value = Written.Bones[Index].BoneValue;
            const bool bFinite = std::isfinite(Value.X) && std::isfinite(Value.Y) && std::isfinite(Value.Z);
            Check(!bFinite || Back.Bones[Index].BoneValue == Value);
        }
    }
}

// Fields per record, with quoted fields free to hold commas, quotes and line breaks.
std::vector<int> CsvFieldCounts(const std::string& Csv)
{
    std::vector<int> Counts;
    int Fields = 1;
    bool bQuoted = false;
    for (std::size_t Index = 0; Index < Csv.size(); ++Index)
    {
        const char Char = Csv[Index];
        if (Char == '"')
        {
            bQuoted = !bQuoted;
        }
        else if (!bQuoted && Char == ',')
        {
            ++Fields;
        }
        else if (!bQuoted && Char == '\r')
        {
            Check(Index + 1 < Csv.size() && Csv[Index + 1] == '\n');
            Counts.push_back(Fields);
            Fields = 1;
            ++Index;
        }
        else
        {
            Check(bQuoted || Char != '\n');
        }
    }
    Check(!bQuoted && Fields == 1);
    return Counts;
}

void CheckCsv(const FCadrelZELResponse& Animation)
{
    const std::string Csv = AnimationToCsv(Animation);
    Check(!Csv.empty() && Csv.ends_with("\r\n"));
    const std::vector<int> Counts = CsvFieldCounts(Csv);
    Check(Counts.size() == std::size_t(Animation.Frames.Num()) + 1);
    const int Columns = 2 + Animation.BlendShapesNames.Num() + 3 * Animation.BonesNames.Num();
    for (const int Count : Counts)
    {
        Check(Count == Columns);
    }
}

std::string Streamed(SIZE_T ChunkBytes, const FCadrelZELResponse& Animation,
                     void (*Write)(const FCadrelZELResponse&, FTextOutput&))
{
    std::string Sent;
    FTextOutput Out(ChunkBytes, [&Sent](std::string_view Chunk) { Sent += Chunk; });
    Write(Animation, Out);
    Out.Flush();
    return Sent;
}

// Well-formed enough for a browser: tags nest and close, attribute values are
// quoted and hold no NaN or infinity, '&' starts one of the entities the writer
// uses, and the text is UTF-8.
void CheckSvg(const std::string& Svg)
{
    Check(FString::FromUTF8(Svg).ToUTF8() == Svg);
    Check(Svg.starts_with("<?xml ") && Svg.ends_with("</svg>\n"));
    std::vector<std::string> Open;
    std::size_t Index = Svg.find("?>") + 2;
    while ((Index = Svg.find_first_of("<&", Index)) != std::string::npos)
    {
        if (Svg[Index] == '&')
        {
            const std::size_t End = Svg.find(';', Index);
            Check(End != std::string::npos && End - Index <= 5);
            const std::string Entity = Svg.substr(Index, End - Index + 1);
            Check(Entity == "&amp;" || Entity == "&lt;" || Entity == "&gt;" || Entity == "&quot;");
            Index = End;
            continue;
        }
        std::size_t End = Index + 1;
        for (bool bInValue = false; End < Svg.size() && (bInValue || Svg[End] != '>'); ++End)
        {
            Check(Svg[End] != '<');
            bInValue = Svg[End] == '"' ? !bInValue : bInValue;
        }
        Check(End < Svg.size());
        const std::string Tag = Svg.substr(Index + 1, End - Index - 1);
        Check(Tag.find("nan") == std::string::npos && Tag.find("inf") == std::string::npos);
        const std::string Name = Tag.substr(Tag[0] == '/', Tag.find_first_of(" /", 1) - (Tag[0] == '/'));
        if (Tag[0] == '/')
        {
            Check(!Open.empty() && Open.back() == Name);
            Open.pop_back();
        }
        else if (!Tag.ends_with("/"))
        {
            Open.push_back(Name);
        }
        Index = End;
    }
    Check(Open.empty());
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    FuzzedDataProvider Bytes(Data, Size);
    const FCadrelZELResponse Animation = HostileAnimation(Bytes);
    const int SampleRate = Bytes.ConsumeIntegral<int>();
    std::vector<float> Mono(Bytes.ConsumeIntegralInRange<int>(0, MaxSamples));
    for (float& Sample : Mono)
    {
        Sample = static_cast<float>(HostileDouble(Bytes));
    }
    const std::string Title = Bytes.ConsumeRandomLengthString(64);
    const SIZE_T ChunkBytes = Bytes.ConsumeIntegralInRange<SIZE_T>(1, 512);
    CheckJson(Animation);
    CheckCsv(Animation);
    Check(Streamed(ChunkBytes, Animation, WriteAnimationJson) == AnimationToJson(Animation));
    Check(Streamed(ChunkBytes, Animation, WriteAnimationCsv) == AnimationToCsv(Animation));
    CheckSvg(AnimationToSvg(Animation, Mono, SampleRate, Title));
    return 0;
}
