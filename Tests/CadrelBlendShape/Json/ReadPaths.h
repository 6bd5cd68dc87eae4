#pragma once

#include "CadrelJson.h"
#include "JSON/CadrelJsonInternal.h"

#include <gtest/gtest.h>

#include <string>

// The four ways into the two big readers: the fast walk and the general path over
// the host's tree, each from host text and from UTF-8 bytes. Every behaviour of
// those readers is checked on all four.
enum class EReadPath
{
    FastText,
    FastBytes,
    GeneralText,
    GeneralBytes,
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
    const bool bFast = Path == EReadPath::FastText || Path == EReadPath::FastBytes;
    if (Path == EReadPath::FastText || Path == EReadPath::GeneralText)
    {
        Read(bFast, FString::FromUTF8(Json), Out);
    }
    else
    {
        Read(bFast, Bytes(Json), Out);
    }
}

inline std::string PathName(const testing::TestParamInfo<EReadPath>& Info)
{
    static const char* const Names[] = {"FastText", "FastBytes", "GeneralText", "GeneralBytes"};
    return Names[static_cast<int>(Info.param)];
}

#define CADREL_INSTANTIATE_READ_PATHS(Fixture)                                                               \
    INSTANTIATE_TEST_SUITE_P(AllPaths, Fixture,                                                              \
                             testing::Values(EReadPath::FastText, EReadPath::FastBytes,                      \
                                             EReadPath::GeneralText, EReadPath::GeneralBytes),               \
                             PathName)
