#include "HAL/PlatformTime.h"

#include <chrono>

namespace
{
using FClock = std::chrono::steady_clock;
constexpr double ClockSecondsPerCycle =
    static_cast<double>(FClock::period::num) / static_cast<double>(FClock::period::den);
} // namespace

double FGenericPlatformTime::SecondsPerCycle = ClockSecondsPerCycle;
double FGenericPlatformTime::SecondsPerCycle64 = ClockSecondsPerCycle;

uint64 FPlatformTime::Cycles64()
{
    return static_cast<uint64>(FClock::now().time_since_epoch().count());
}
