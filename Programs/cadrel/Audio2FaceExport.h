#pragma once

#include "CadrelBlendShapeType.h"
#include "CoreMinimal.h"

// Reads an Audio2Face blend-shape export. False when the bytes are not one: the
// codec's reader reports nothing and leaves a record it cannot read at its
// defaults, so an export without its exportFps is taken for no export at all.
bool ReadAudio2FaceExport(const TArray<uint8>& Bytes, FCadrelAudio2FaceBlendShapeInfo& OutExport);
