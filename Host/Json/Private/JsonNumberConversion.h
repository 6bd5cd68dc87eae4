#pragma once

#include "CoreTypes.h"

#include <cmath>
#include <limits>
#include <string_view>

// Reads Text as a number when it is exactly one JSON number and nothing else, under
// the same grammar and range limits as numbers in a document. OutNumber is written
// only on success.
bool ParseJsonNumberText(std::u16string_view Text, double& OutNumber);

// Truncates toward zero; values beyond the integer type's range give its limits and
// NaN gives 0, where a plain cast would be undefined.
template <typename IntType> IntType SaturatingTruncate(double Value)
{
    using FLimits = std::numeric_limits<IntType>;
    // -min() is a power of two, so it is exact as a double where max() may not be.
    constexpr double UpperBound = -static_cast<double>(FLimits::min());
    if (std::isnan(Value))
    {
        return 0;
    }
    if (Value >= UpperBound)
    {
        return FLimits::max();
    }
    if (Value <= static_cast<double>(FLimits::min()))
    {
        return FLimits::min();
    }
    return static_cast<IntType>(Value);
}
