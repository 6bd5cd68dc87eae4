#pragma once

#include <string>

// A step of 1, 2 or 5 times a power of ten, or for spans of minutes a whole number
// of seconds a clock face knows (15, 30, 60, 120, 300 …), that cuts Span into at
// most about MaxTicks pieces. Span and MaxTicks must be positive.
double TickStep(double Span, int MaxTicks);

// Value written with as many decimals as Step needs, and no more.
std::string TickLabel(double Value, double Step);
