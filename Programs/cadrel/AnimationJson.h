#pragma once

#include "CadrelBlendShapeType.h"
#include "TextOutput.h"

#include <string>

// The animation as UTF-8 JSON in the cloud answer's format, so that
// CadrelJson::StringToZELResponse reads it back into an equal record. Every bone
// value is written under "eul", the only key the format has for one. Two numbers
// cannot survive the trip: weights that are not finite become null, which the
// reader takes as 0, and negative zero is written "-0", which it reads as 0.
std::string AnimationToJson(const FCadrelZELResponse& Animation);
void WriteAnimationJson(const FCadrelZELResponse& Animation, FTextOutput& Out);
