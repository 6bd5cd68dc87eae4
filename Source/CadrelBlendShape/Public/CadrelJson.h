#pragma once

#include "CoreMinimal.h"
#include "CadrelBlendShapeType.h"

// Conversions between the module's records and the lipsync servers' JSON.
namespace CadrelJson
{
// Writes the request document the server receives, replacing what OutJson held.
CADRELBLENDSHAPE_API void ZELRequestToString(const FCadrelZELRequest& Request, FString& OutJson);
} // namespace CadrelJson
