#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

// Appends X rounded to a tenth, without a trailing ".0": plot coordinates need no more.
void AppendPlotNumber(std::string& Out, double X);

// SVG path data for a curve given point by point in increasing X. Within each whole
// pixel column only the lowest and the highest point are kept, in their original
// order, so that a long animation keeps its peaks at two points a column at most.
class FColumnReducedPath
{
public:
    void Add(double X, double Y);
    // The curve has a gap here: the next point starts a new subpath.
    void Break();
    const std::string& Finish();

private:
    struct FPoint
    {
        double X;
        double Y;
        std::size_t Order;
    };

    void Flush();
    void Append(const FPoint& Point);

    std::string Data;
    FPoint Low{};
    FPoint High{};
    double Column = 0.0;
    std::size_t Count = 0;
    bool bPending = false;
    bool bNewSubpath = true;
};

// The lowest and highest of the samples that fall in one pixel column.
struct FColumnRange
{
    float Low = 0.0f;
    float High = 0.0f;
    bool bAny = false;
};

// Sample I falls in column floor(I * ColumnsPerSample); samples that are not finite
// and columns outside [0, Columns) are left out.
std::vector<FColumnRange> SampleColumnRanges(std::span<const float> Samples, int Columns,
                                             double ColumnsPerSample);
