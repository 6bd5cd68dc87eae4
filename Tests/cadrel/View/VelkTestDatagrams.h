#pragma once

#include "FaceEngine.h"

#include <lo/lo.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

// Datagrams of the live link, built with liblo as a sender builds them.
namespace VelkTest
{
// The names our server sends: the engine's.
inline std::vector<std::string> ArkitNames()
{
    const auto& Names = LipsyncEngine::BlendShapeNames();
    return {Names.begin(), Names.end()};
}

inline std::vector<unsigned char> Take(void* Bytes, size_t Size)
{
    std::vector<unsigned char> Out(static_cast<unsigned char*>(Bytes),
                                   static_cast<unsigned char*>(Bytes) + Size);
    std::free(Bytes);
    return Out;
}

inline std::vector<unsigned char> Serialise(lo_message Message, const char* Path)
{
    size_t Size = 0;
    void* Bytes = lo_message_serialise(Message, Path, nullptr, &Size);
    lo_message_free(Message);
    return Take(Bytes, Size);
}

// One frame as our server sends it: header, the 52 shapes (jawOpen at JawOpen), three bones, Apply.
// The caller frees it with lo_bundle_free_recursive.
inline lo_bundle NewFrameBundle(int32_t Stream, int32_t Number, double Time, float JawOpen,
                                const float (&HeadRotation)[4] = {0, 0, 0, 1})
{
    lo_bundle Bundle = lo_bundle_new(LO_TT_IMMEDIATE);
    lo_message Header = lo_message_new();
    lo_message_add(Header, "iid", Stream, Number, Time);
    lo_bundle_add_message(Bundle, "/Cadrel/Frame", Header);
    for (const std::string& Name : ArkitNames())
    {
        lo_message Value = lo_message_new();
        lo_message_add(Value, "sf", Name.c_str(), Name == "jawOpen" ? JawOpen : 0.0f);
        lo_bundle_add_message(Bundle, "/VMC/Ext/Blend/Val", Value);
    }
    for (const char* Bone : {"Head", "LeftEye", "RightEye"})
    {
        static const float Identity[4] = {0, 0, 0, 1};
        const float* Rotation = std::string(Bone) == "Head" ? HeadRotation : Identity;
        lo_message Pose = lo_message_new();
        lo_message_add(Pose, "sfffffff", Bone, 0.0f, 0.0f, 0.0f, Rotation[0], Rotation[1], Rotation[2],
                       Rotation[3]);
        lo_bundle_add_message(Bundle, "/VMC/Ext/Bone/Pos", Pose);
    }
    lo_bundle_add_message(Bundle, "/VMC/Ext/Blend/Apply", lo_message_new());
    return Bundle;
}

inline std::vector<unsigned char> FrameBundle(int32_t Stream, int32_t Number, double Time, float JawOpen,
                                              const float (&HeadRotation)[4] = {0, 0, 0, 1})
{
    lo_bundle Bundle = NewFrameBundle(Stream, Number, Time, JawOpen, HeadRotation);
    size_t Size = 0;
    void* Bytes = lo_bundle_serialise(Bundle, nullptr, &Size);
    lo_bundle_free_recursive(Bundle);
    return Take(Bytes, Size);
}

inline std::vector<unsigned char> Audio(int32_t Stream, int64_t FirstSample, int32_t Rate, size_t BlobBytes)
{
    std::vector<unsigned char> Pcm(BlobBytes, 0x01);
    lo_blob Blob = lo_blob_new(static_cast<int32_t>(Pcm.size()), Pcm.data());
    lo_message Message = lo_message_new();
    lo_message_add(Message, "ihib", Stream, FirstSample, Rate, Blob);
    std::vector<unsigned char> Out = Serialise(Message, "/Cadrel/Audio");
    lo_blob_free(Blob);
    return Out;
}
} // namespace VelkTest
