#include "TestWav.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <numbers>

namespace
{
void AppendLittleEndian(std::string& Out, std::uint64_t Value, int Bytes)
{
    for (int Index = 0; Index < Bytes; ++Index)
    {
        Out += char((Value >> (8 * Index)) & 0xFF);
    }
}

void AppendChunk(std::string& Out, const char* Id, const std::string& Payload)
{
    Out += Id;
    AppendLittleEndian(Out, Payload.size(), 4);
    Out += Payload;
    if (Payload.size() % 2)
    {
        Out += '\0';
    }
}

void AppendSample(std::string& Out, double Value, const FWavSpec& Spec)
{
    if (Spec.bFloat)
    {
        const float Sample = float(Value);
        char Bytes[4];
        std::memcpy(Bytes, &Sample, 4);
        Out.append(Bytes, 4);
        return;
    }
    const double Scale = std::ldexp(1.0, Spec.Bits - 1) - 1.0;
    const auto Integer = std::int64_t(std::lround(Value * Scale));
    // 8-bit WAV samples are unsigned.
    AppendLittleEndian(Out, std::uint64_t(Spec.Bits == 8 ? Integer + 128 : Integer), Spec.Bits / 8);
}
} // namespace

std::string MakeWav(const FWavSpec& Spec)
{
    const int BlockAlign = Spec.Channels * Spec.Bits / 8;
    std::string Format;
    AppendLittleEndian(Format, Spec.bFloat ? 3 : 1, 2);
    AppendLittleEndian(Format, Spec.Channels, 2);
    AppendLittleEndian(Format, Spec.SampleRate, 4);
    AppendLittleEndian(Format, std::uint64_t(Spec.SampleRate) * BlockAlign, 4);
    AppendLittleEndian(Format, BlockAlign, 2);
    AppendLittleEndian(Format, Spec.Bits, 2);

    std::string Data;
    const bool bTone = Spec.Samples.empty();
    const auto Frames = bTone ? std::size_t(Spec.Seconds * Spec.SampleRate) : Spec.Samples.size();
    for (std::size_t Frame = 0; Frame < Frames; ++Frame)
    {
        const double Time = double(Frame) / Spec.SampleRate;
        const double Envelope = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * 3.0 * Time);
        const double Value =
            bTone ? 0.6 * Envelope * std::sin(2.0 * std::numbers::pi * 180.0 * Time) : Spec.Samples[Frame];
        for (int Channel = 0; Channel < Spec.Channels; ++Channel)
        {
            AppendSample(Data, Value, Spec);
        }
    }

    std::string Body = "WAVE";
    if (Spec.bListFirst)
    {
        static const char List[] = "INFOISFT\x05\0\0\0test";
        AppendChunk(Body, "LIST", std::string(List, sizeof(List)));
    }
    AppendChunk(Body, "fmt ", Format);
    AppendChunk(Body, "data", Data);
    std::string Wav = "RIFF";
    AppendLittleEndian(Wav, Body.size(), 4);
    return Wav + Body;
}
