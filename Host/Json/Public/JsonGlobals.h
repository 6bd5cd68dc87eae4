#pragma once

#include "CoreTypes.h"

// Export spelling of the JSON module; the same definition as every other JSON
// header that carries it, so the headers can be included in any order.
#define JSON_API ORV_EXPORT
