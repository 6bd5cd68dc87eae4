#pragma once

#include "CoreTypes.h"

#define HTTP_API ORV_EXPORT

class FHttpManager;
class FHttpModule;
