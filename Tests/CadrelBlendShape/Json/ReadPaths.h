#pragma once

#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"

#include <gtest/gtest.h>

#include <string>

// Two of the four ways into the two big readers: the fast walk from UTF-8 bytes and
// the general path over the host's tree from host text. The fast path tests and the
// differential fuzzer hold the fast walk to the general path on both kinds of input,
// so the other two pairings find no fault these miss.
enum class EReadPath
{
    FastBytes,
    GeneralText,
};

inline TArray<uint8> Bytes(const std::string& Json)
{
    return TArray<uint8>(reinterpret_cast<const uint8*>(Json.data()), static_cast<int32>(Json.size()));
}

template <typename InputType> void Read(bool bFast, const InputType& Input, FCadrelZELResponse& Out)
{
    bFast ? CadrelJson::StringToZELResponse(Input, Out)
          : CadrelJson::StringToZELResponse_Internal(Input, Out);
}

template <typename InputType>
void Read(bool bFast, const InputType& Input, FCadrelAudio2FaceBlendShapeInfo& Out)
{
    bFast ? CadrelJson::StringToAudio2FaceResponse(Input, Out)
          : CadrelJson::StringToAudio2FaceResponse_Internal(Input, Out);
}

template <typename RecordType> void ReadWith(EReadPath Path, const std::string& Json, RecordType& Out)
{
    Path == EReadPath::FastBytes ? Read(true, Bytes(Json), Out) : Read(false, FString::FromUTF8(Json), Out);
}

inline std::string PathName(const testing::TestParamInfo<EReadPath>& Info)
{
    static const char* const Names[] = {"FastBytes", "GeneralText"};
    return Names[static_cast<int>(Info.param)];
}

#define CADREL_INSTANTIATE_READ_PATHS(Fixture)                                                               \
    INSTANTIATE_TEST_SUITE_P(AllPaths, Fixture,                                                              \
                             testing::Values(EReadPath::FastBytes, EReadPath::GeneralText), PathName)
