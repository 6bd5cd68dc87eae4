#include "JSON/FastJsonWorkspace.h"

#include <cstring>
#include <utf8.h>

namespace
{
using CadrelJson::FastJson::FReadWorkspace;

// A long take's answer is about 20 MB; texts up to this size keep their buffers.
constexpr SIZE_T KeptLength = SIZE_T{32} << 20;

// The most UTF-8 bytes one UTF-16 unit can need: three (a surrogate pair gives
// four bytes for two units).
constexpr SIZE_T MaxBytesPerUnit = 3;

bool IsHighSurrogate(uint32 Unit)
{
    return Unit >= 0xD800 && Unit <= 0xDBFF;
}

bool IsLowSurrogate(uint32 Unit)
{
    return Unit >= 0xDC00 && Unit <= 0xDFFF;
}

// Units narrowed per step of the ASCII loop: wide enough for the compiler to turn
// the check and the copy into a few vector instructions each.
constexpr SIZE_T AsciiBlock = 32;

bool IsAsciiBlock(const char16_t* Units)
{
    char16_t Any = 0;
    for (SIZE_T Offset = 0; Offset < AsciiBlock; ++Offset)
    {
        Any |= Units[Offset];
    }
    return Any < 0x80;
}

void NarrowAsciiBlock(const char16_t* Units, char* Out)
{
    for (SIZE_T Offset = 0; Offset < AsciiBlock; ++Offset)
    {
        Out[Offset] = static_cast<char>(Units[Offset]);
    }
}

// JSON text is nearly all ASCII, so it is narrowed a block at a time; utf8cpp
// encodes the rest.
char* ConvertToUtf8(std::u16string_view Text, char* Out)
{
    const char16_t* Units = Text.data();
    const SIZE_T Count = Text.size();
    SIZE_T Index = 0;
    while (Index < Count)
    {
        while (Index + AsciiBlock <= Count && IsAsciiBlock(Units + Index))
        {
            NarrowAsciiBlock(Units + Index, Out);
            Out += AsciiBlock;
            Index += AsciiBlock;
        }
        if (Index == Count)
        {
            break;
        }
        uint32 CodePoint = Units[Index++];
        if (IsHighSurrogate(CodePoint) && Index < Count && IsLowSurrogate(Units[Index]))
        {
            CodePoint = 0x10000 + ((CodePoint - 0xD800) << 10) + (Units[Index++] - 0xDC00u);
        }
        else if (IsHighSurrogate(CodePoint) || IsLowSurrogate(CodePoint))
        {
            CodePoint = 0xFFFD;
        }
        if (CodePoint < 0x80)
        {
            *Out++ = static_cast<char>(CodePoint);
        }
        else
        {
            Out = utf8::unchecked::append(CodePoint, Out);
        }
    }
    return Out;
}
} // namespace

FReadWorkspace::FReadWorkspace()
{
    ResetParser();
}

// One level deeper than the host's parser allows, so that a container at the
// deepest level the walk opens can be found non-empty and refused; the parser's
// own checks in debug builds would stop the process at its limit instead. Should
// this allocation fail, the first document allocates again.
void FReadWorkspace::ResetParser()
{
    Parser = simdjson::ondemand::parser();
    [[maybe_unused]] const simdjson::error_code Error =
        Parser.allocate(simdjson::SIMDJSON_PADDING, simdjson::DEFAULT_MAX_DEPTH + 1);
}

FReadWorkspace& FReadWorkspace::Get()
{
    thread_local FReadWorkspace Workspace;
    return Workspace;
}

char* FReadWorkspace::Reserve(SIZE_T Bytes)
{
    if (Capacity < Bytes + simdjson::SIMDJSON_PADDING)
    {
        Buffer.reset();
        Capacity = 0;
        Buffer = std::make_unique_for_overwrite<char[]>(Bytes + simdjson::SIMDJSON_PADDING);
        Capacity = Bytes + simdjson::SIMDJSON_PADDING;
    }
    return Buffer.get();
}

std::string_view FReadWorkspace::Pad(std::string_view Utf8)
{
    char* Out = Reserve(Utf8.size());
    if (!Utf8.empty())
    {
        std::memcpy(Out, Utf8.data(), Utf8.size());
    }
    Used = Utf8.size();
    std::memset(Out + Used, 0, simdjson::SIMDJSON_PADDING);
    End = Out + Used;
    return std::string_view(Out, Used);
}

std::string_view FReadWorkspace::Pad(std::u16string_view Text)
{
    char* Out = Reserve(Text.size() * MaxBytesPerUnit);
    Used = static_cast<SIZE_T>(ConvertToUtf8(Text, Out) - Out);
    std::memset(Out + Used, 0, simdjson::SIMDJSON_PADDING);
    End = Out + Used;
    return std::string_view(Out, Used);
}

std::string_view FReadWorkspace::Pad(const TArray<uint8>& Bytes)
{
    const std::string_view Utf8(reinterpret_cast<const char*>(Bytes.GetData()),
                                static_cast<SIZE_T>(Bytes.Num()));
    if (static_cast<SIZE_T>(Bytes.GetSlack()) < simdjson::SIMDJSON_PADDING)
    {
        return Pad(Utf8);
    }
    Used = 0;
    End = Utf8.data() + Utf8.size();
    return Utf8;
}

void FReadWorkspace::Trim()
{
    if (Used > KeptLength)
    {
        Buffer.reset();
        Capacity = 0;
        ResetParser();
    }
    Used = 0;
}
