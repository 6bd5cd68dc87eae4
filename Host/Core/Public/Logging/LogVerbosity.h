#pragma once

#include "CoreTypes.h"

namespace ELogVerbosity
{
enum Type : uint8
{
    NoLogging = 0,
    Fatal,
    Error,
    Warning,
    Display,
    Log,
    Verbose,
    VeryVerbose,
    All = VeryVerbose,
};

CORE_API const TCHAR* ToString(Type Verbosity);
} // namespace ELogVerbosity
