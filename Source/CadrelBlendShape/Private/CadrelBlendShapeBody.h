#pragma once

#include "CoreMinimal.h"

// The multipart body of a lipsync request: the request document, then the WAV file
// as "audio.wav". The servers expect exactly this layout, byte for byte, including
// the line break before the first boundary.
TArray<uint8> MakeZELRequestBody(const FString& Json, const TArray<uint8>& AudioData);
