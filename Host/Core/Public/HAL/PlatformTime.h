#pragma once

#include "CoreTypes.h"

// The host's high-resolution clock: a cycle counter and the seconds each cycle lasts.
struct CORE_API FGenericPlatformTime
{
    static double SecondsPerCycle;
    static double SecondsPerCycle64;
};

struct CORE_API FPlatformTime : public FGenericPlatformTime
{
    static uint64 Cycles64();
    static uint32 Cycles() { return static_cast<uint32>(Cycles64()); }
    static double Seconds() { return static_cast<double>(Cycles64()) * SecondsPerCycle64; }
    static double ToSeconds64(uint64 Cycles) { return static_cast<double>(Cycles) * SecondsPerCycle64; }
};
