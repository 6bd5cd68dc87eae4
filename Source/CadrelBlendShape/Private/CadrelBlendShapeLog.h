#pragma once

#include "CoreMinimal.h"

// The module's own log category; other modules do not log to it.
ORV_DECLARE_LOG_CATEGORY_EXTERN(CadrelBlendShapeLog, Log, All);
