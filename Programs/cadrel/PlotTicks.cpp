#include "PlotTicks.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

double TickStep(double Span, int MaxTicks)
{
    const double Raw = Span / MaxTicks;
    if (Raw > 10.0)
    {
        for (const double Seconds : {15.0, 30.0, 60.0, 120.0, 300.0, 600.0, 900.0, 1800.0, 3600.0})
        {
            if (Seconds >= Raw)
            {
                return Seconds;
            }
        }
    }
    const double Magnitude = std::pow(10.0, std::floor(std::log10(Raw)));
    for (const double Multiple : {1.0, 2.0, 5.0})
    {
        if (Multiple * Magnitude >= Raw)
        {
            return Multiple * Magnitude;
        }
    }
    return 10.0 * Magnitude;
}

std::string TickLabel(double Value, double Step)
{
    const int Decimals = Step >= 1.0 ? 0 : static_cast<int>(std::ceil(-std::log10(Step) - 1e-9));
    char Buffer[64];
    const int Length = std::snprintf(Buffer, sizeof(Buffer), "%.*f", Decimals, Value);
    return Length > 0
               ? std::string(Buffer, static_cast<std::size_t>(std::min<int>(Length, sizeof(Buffer) - 1)))
               : std::string();
}
