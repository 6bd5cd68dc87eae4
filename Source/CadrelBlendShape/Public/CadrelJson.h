#pragma once

#include "CoreMinimal.h"
#include "CadrelBlendShapeType.h"

// Conversions between the module's records and the lipsync servers' JSON.
//
// The readers report nothing: a text that is not one complete JSON document of the
// expected kind leaves the output exactly as it was. Scalar fields are overwritten
// even when their key is absent; arrays are appended to, never emptied first.
namespace CadrelJson
{
// The enumerator's name as the servers know it: "AUDIO2FACE" or "VIRETHIO".
CADRELBLENDSHAPE_API FString GetType(EBlendShapeType InType);

// Name to enumerator, ignoring letter case; 255 when no enumerator has that name.
CADRELBLENDSHAPE_API EBlendShapeType GetType(const FString& InName);
CADRELBLENDSHAPE_API ECadrelRigType GetRigType(const FString& InName);
// Takes the emotion's name without its "CEE_" prefix ("calm").
CADRELBLENDSHAPE_API ECadrelExplicitEmotion GetExplicitEmotion(const FString& InName);

// The request and stream endpoints of a server type, read afresh on every call so
// that a changed setting applies to the next request; empty for an unknown type.
CADRELBLENDSHAPE_API FString GetBlendShapeURL(EBlendShapeType InType);
CADRELBLENDSHAPE_API FString GetStreamURL(EBlendShapeType InType);

// Writes the request document the server receives, replacing what OutJson held.
CADRELBLENDSHAPE_API void ZELRequestToString(const FCadrelZELRequest& Request, FString& OutJson);

// Reads a request document back into a request record.
CADRELBLENDSHAPE_API void StringToZELRequest(const FString& JsonString, FCadrelZELRequest& OutRequest);

// Reads a cloud lipsync answer. The byte overload takes the UTF-8 body of an HTTP
// response as it arrived, which spares the round trip through host text.
CADRELBLENDSHAPE_API void StringToZELResponse(const FString& JsonString, FCadrelZELResponse& OutResponse);
CADRELBLENDSHAPE_API void StringToZELResponse(const TArray<uint8>& Utf8Json, FCadrelZELResponse& OutResponse);

// Reads a blend-shape export of the local Audio2Face bridge.
CADRELBLENDSHAPE_API void StringToAudio2FaceResponse(const FString& JsonString,
                                                     FCadrelAudio2FaceBlendShapeInfo& OutInfo);
CADRELBLENDSHAPE_API void StringToAudio2FaceResponse(const TArray<uint8>& Utf8Json,
                                                     FCadrelAudio2FaceBlendShapeInfo& OutInfo);

// Turns an Audio2Face export into the common response, every weight multiplied by
// WeightScale. Frames already in OutResponse keep their bones.
CADRELBLENDSHAPE_API void Audio2FaceBlendShapeToZELResponse(const FCadrelAudio2FaceBlendShapeInfo& InInfo,
                                                            FCadrelZELResponse& OutResponse,
                                                            double WeightScale);
// The same for an export no longer needed: its rows' weights are moved rather than
// copied, which spares a long take its size in fresh memory, and InInfo's rows are
// left empty.
CADRELBLENDSHAPE_API void Audio2FaceBlendShapeToZELResponse(FCadrelAudio2FaceBlendShapeInfo&& InInfo,
                                                            FCadrelZELResponse& OutResponse,
                                                            double WeightScale);

// Reads where the Velk link listens and how long the audio runs.
CADRELBLENDSHAPE_API void StringToVelkInfo(const FString& JsonString, FCadrelVelkInfo& OutInfo);

// Takes the string under "token"; OutToken keeps its text when there is none.
CADRELBLENDSHAPE_API void StringToToken(const FString& JsonString, FString& OutToken);
} // namespace CadrelJson
