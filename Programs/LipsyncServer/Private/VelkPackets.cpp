#include "VelkPackets.h"

#include "BlendShape.h"

#include <lo/lo.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

namespace VelkPackets
{
namespace
{
struct FBundleDeleter
{
    void operator()(lo_bundle Bundle) const { lo_bundle_free_recursive(Bundle); }
};
struct FMessageDeleter
{
    void operator()(lo_message Message) const { lo_message_free(Message); }
};
struct FBlobDeleter
{
    void operator()(lo_blob Blob) const { lo_blob_free(Blob); }
};

FQuaternion Multiply(const FQuaternion& A, const FQuaternion& B)
{
    return {
        A[3] * B[0] + A[0] * B[3] + A[1] * B[2] - A[2] * B[1],
        A[3] * B[1] - A[0] * B[2] + A[1] * B[3] + A[2] * B[0],
        A[3] * B[2] + A[0] * B[1] - A[1] * B[0] + A[2] * B[3],
        A[3] * B[3] - A[0] * B[0] - A[1] * B[1] - A[2] * B[2],
    };
}

FQuaternion AboutAxis(int Axis, float Degrees)
{
    const float Half = Degrees * float(std::numbers::pi / 360.0);
    FQuaternion Rotation{0.0f, 0.0f, 0.0f, std::cos(Half)};
    Rotation[std::size_t(Axis)] = std::sin(Half);
    return Rotation;
}

void AddBone(lo_bundle Bundle, const char* Name, const std::array<float, 3>& EulerDegrees)
{
    const FQuaternion Rotation = BoneRotation(EulerDegrees);
    lo_message Message = lo_message_new();
    lo_message_add_string(Message, Name);
    for (int Axis = 0; Axis < 3; ++Axis)
    {
        lo_message_add_float(Message, 0.0f);
    }
    for (const float Component : Rotation)
    {
        lo_message_add_float(Message, Component);
    }
    lo_bundle_add_message(Bundle, "/VMC/Ext/Bone/Pos", Message);
}

FDatagram Serialise(lo_bundle Bundle)
{
    FDatagram Bytes(lo_bundle_length(Bundle));
    std::size_t Size = Bytes.size();
    lo_bundle_serialise(Bundle, Bytes.data(), &Size);
    Bytes.resize(Size);
    return Bytes;
}
} // namespace

FQuaternion BoneRotation(const std::array<float, 3>& EulerDegrees)
{
    // Unity turns about z, then x, then y. Its y turns to the right of a face
    // looking along +z, the engine's yaw to the left.
    const FQuaternion Yaw = AboutAxis(1, -EulerDegrees[1]);
    const FQuaternion Pitch = AboutAxis(0, EulerDegrees[0]);
    const FQuaternion Roll = AboutAxis(2, EulerDegrees[2]);
    return Multiply(Multiply(Yaw, Pitch), Roll);
}

FDatagram FrameBundle(std::int32_t Stream, std::int32_t FrameNumber, double Seconds,
                      const LipsyncEngine::FFaceFrame& Frame)
{
    using namespace LipsyncEngine;
    const std::unique_ptr<void, FBundleDeleter> Bundle(lo_bundle_new(LO_TT_IMMEDIATE));
    lo_message Header = lo_message_new();
    lo_message_add_int32(Header, Stream);
    lo_message_add_int32(Header, FrameNumber);
    lo_message_add_double(Header, Seconds);
    lo_bundle_add_message(Bundle.get(), "/Cadrel/Frame", Header);
    const auto& Names = BlendShapeNames();
    for (std::size_t Shape = 0; Shape < NumBlendShapes; ++Shape)
    {
        const float Weight = Frame.Weights[Shape];
        lo_message Value = lo_message_new();
        lo_message_add_string(Value, std::string(Names[Shape]).c_str());
        lo_message_add_float(Value, std::isfinite(Weight) ? std::clamp(Weight, 0.0f, 1.0f) : 0.0f);
        lo_bundle_add_message(Bundle.get(), "/VMC/Ext/Blend/Val", Value);
    }
    AddBone(Bundle.get(), "Head", Frame.Bones[EBone::Neck]);
    AddBone(Bundle.get(), "LeftEye", Frame.Bones[EBone::LeftEye]);
    AddBone(Bundle.get(), "RightEye", Frame.Bones[EBone::RightEye]);
    lo_bundle_add_message(Bundle.get(), "/VMC/Ext/Blend/Apply", lo_message_new());
    return Serialise(Bundle.get());
}

FDatagram AudioMessage(std::int32_t Stream, std::int64_t FirstSample, std::span<const std::int16_t> Samples)
{
    const std::size_t Count = std::min(MaxAudioSamples, Samples.size());
    // The blob is little-endian whatever the machine.
    std::vector<std::uint8_t> Pcm(Count * 2);
    for (std::size_t Index = 0; Index < Count; ++Index)
    {
        const auto Sample = std::uint16_t(Samples[Index]);
        Pcm[2 * Index] = std::uint8_t(Sample & 0xFF);
        Pcm[2 * Index + 1] = std::uint8_t(Sample >> 8);
    }
    const std::unique_ptr<void, FBlobDeleter> Blob(lo_blob_new(std::int32_t(Pcm.size()), Pcm.data()));
    const std::unique_ptr<void, FMessageDeleter> Message(lo_message_new());
    lo_message_add_int32(Message.get(), Stream);
    lo_message_add_int64(Message.get(), FirstSample);
    lo_message_add_int32(Message.get(), AudioRate);
    lo_message_add_blob(Message.get(), Blob.get());
    FDatagram Bytes(lo_message_length(Message.get(), "/Cadrel/Audio"));
    std::size_t Size = Bytes.size();
    lo_message_serialise(Message.get(), "/Cadrel/Audio", Bytes.data(), &Size);
    Bytes.resize(Size);
    return Bytes;
}
} // namespace VelkPackets
