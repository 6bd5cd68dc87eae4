#include "JSON/CadrelJsonReadRules.h"

#include <cmath>
#include <limits>

int32 CadrelJson::ReadRules::TruncateToInt32(double Value)
{
    using FLimits = std::numeric_limits<int32>;
    if (std::isnan(Value))
    {
        return 0;
    }
    if (Value >= static_cast<double>(FLimits::max()))
    {
        return FLimits::max();
    }
    if (Value <= static_cast<double>(FLimits::min()))
    {
        return FLimits::min();
    }
    return static_cast<int32>(Value);
}

float CadrelJson::ReadRules::NarrowToFloat(double Value)
{
    constexpr double Largest = static_cast<double>(std::numeric_limits<float>::max());
    if (std::isnan(Value))
    {
        return 0.0f;
    }
    return static_cast<float>(std::fmax(-Largest, std::fmin(Value, Largest)));
}

bool CadrelJson::ReadRules::CheckEulTriple(int32 Num)
{
    return ORV_ENSURE(Num >= 3);
}
