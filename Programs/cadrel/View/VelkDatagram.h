#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

// What one datagram of the live link turned out to be.
enum class EVelkDatagramKind
{
    Accepted,
    Malformed,
    Oversized,
    Foreign,
};

// Which of the receiver's two ports a datagram reached; each takes its own messages.
enum class EVelkPortKind
{
    Velk,
    Audio,
};

enum class EVelkMessageKind
{
    FrameHeader,
    BlendValue,
    BonePose,
    Apply,
    Audio,
};

// One validated message. Only the fields of its kind are set.
struct FVelkMessage
{
    EVelkMessageKind Kind = EVelkMessageKind::Apply;
    int32_t Stream = 0;
    int32_t FrameNumber = 0;
    double FrameTime = 0.0;
    std::string Name;
    float Value = 0.0f;
    float Rotation[4] = {0.0f, 0.0f, 0.0f, 1.0f};
    int64_t FirstSample = 0;
    int32_t SampleRate = 0;
    std::vector<int16_t> Samples;
};

struct FVelkDatagram
{
    EVelkDatagramKind Kind = EVelkDatagramKind::Foreign;
    std::vector<FVelkMessage> Messages;
};

// The largest datagram each port takes: a VMC frame of 52 shapes and 3 bones is about
// 3 KB, and other VMC senders add a body's bones; audio messages stay within 1,200.
inline constexpr size_t MaxVelkDatagramBytes = 16384;
inline constexpr size_t MaxAudioDatagramBytes = 1200;
