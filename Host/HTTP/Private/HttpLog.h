#pragma once

#include "Logging/LogMacros.h"

ORV_DECLARE_LOG_CATEGORY_EXTERN(LogHttp, Log, All);
