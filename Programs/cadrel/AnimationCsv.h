#pragma once

#include "CadrelBlendShapeType.h"
#include "TextOutput.h"

#include <string>

// The animation as a CSV table (RFC 4180: CRLF line ends, fields quoted where they
// must be): `frame,time`, one column per blend-shape name, then `NAME.x,NAME.y,NAME.z`
// per bone name; one row per frame, time in seconds. The names decide the columns:
// values a frame lacks are empty cells, values beyond the names are left out, and so
// are numbers that are not finite and the time when the frame rate is not positive.
std::string AnimationToCsv(const FCadrelZELResponse& Animation);
void WriteAnimationCsv(const FCadrelZELResponse& Animation, FTextOutput& Out);
