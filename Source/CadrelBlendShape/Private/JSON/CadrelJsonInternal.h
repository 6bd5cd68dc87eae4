#pragma once

#include "CoreMinimal.h"
#include "CadrelBlendShapeType.h"

// The general path of the two big readers: the host's JSON tree read with the
// host's accessors, step by step as the answers are defined. The public readers
// walk the parser's document directly instead; these stay as the reference that
// tests and the differential fuzzer hold the fast path to, record for record.
namespace CadrelJson
{
CADRELBLENDSHAPE_API void StringToZELResponse_Internal(const FString& JsonString,
                                                       FCadrelZELResponse& OutResponse);
CADRELBLENDSHAPE_API void StringToZELResponse_Internal(const TArray<uint8>& Utf8Json,
                                                       FCadrelZELResponse& OutResponse);
CADRELBLENDSHAPE_API void StringToAudio2FaceResponse_Internal(const FString& JsonString,
                                                              FCadrelAudio2FaceBlendShapeInfo& OutInfo);
CADRELBLENDSHAPE_API void StringToAudio2FaceResponse_Internal(const TArray<uint8>& Utf8Json,
                                                              FCadrelAudio2FaceBlendShapeInfo& OutInfo);
} // namespace CadrelJson
