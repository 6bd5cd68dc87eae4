#pragma once

#include "FaceEngine.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

// The live link's datagrams, built with liblo: one VMC bundle per animation frame for
// the Velk port, and audio messages for the audio port. Docs/VelkLink.md has the
// wire format with an example of each.
namespace VelkPackets
{
using FDatagram = std::vector<std::uint8_t>;

// The most samples one audio message carries, so that its datagram stays within
// 1,200 bytes, below the smallest path MTU a receiver across a network is likely to have.
inline constexpr std::size_t MaxAudioSamples = 512;
inline constexpr std::size_t MaxAudioDatagramBytes = 1200;

// The audio the link sends: 16 kHz mono, the rate the engine runs at.
inline constexpr int AudioRate = 16000;

// A rotation quaternion x, y, z, w in Unity's axes (left-handed, y up, z forward).
using FQuaternion = std::array<float, 4>;

// The engine's Euler angles in degrees (x pitch, positive looking down; y yaw,
// positive turning to the face's left; z roll) as a VMC bone rotation.
FQuaternion BoneRotation(const std::array<float, 3>& EulerDegrees);

// /Cadrel/Frame, the 52 /VMC/Ext/Blend/Val, Head, LeftEye and RightEye
// /VMC/Ext/Bone/Pos, then /VMC/Ext/Blend/Apply, as one bundle to be dispatched
// immediately.
FDatagram FrameBundle(std::int32_t Stream, std::int32_t FrameNumber, double Seconds,
                      const LipsyncEngine::FFaceFrame& Frame);

// One /Cadrel/Audio message carrying the first MaxAudioSamples of Samples at most,
// which start at sample FirstSample of the stream.
FDatagram AudioMessage(std::int32_t Stream, std::int64_t FirstSample, std::span<const std::int16_t> Samples);
} // namespace VelkPackets
