#include "PlotColumns.h"

#include <charconv>
#include <cmath>

void AppendPlotNumber(std::string& Out, double X)
{
    char Buffer[32];
    const std::to_chars_result Result =
        std::to_chars(Buffer, Buffer + sizeof(Buffer), X, std::chars_format::fixed, 1);
    std::string_view Text(Buffer, static_cast<std::size_t>(Result.ptr - Buffer));
    if (Text.ends_with(".0"))
    {
        Text.remove_suffix(2);
    }
    Out += Text == "-0" ? "0" : Text;
}

void FColumnReducedPath::Add(double X, double Y)
{
    const double PointColumn = std::floor(X);
    if (bPending && PointColumn != Column)
    {
        Flush();
    }
    const FPoint Point{X, Y, Count++};
    if (!bPending)
    {
        Low = High = Point;
        Column = PointColumn;
        bPending = true;
    }
    else if (Y < Low.Y)
    {
        Low = Point;
    }
    else if (Y > High.Y)
    {
        High = Point;
    }
}

void FColumnReducedPath::Break()
{
    Flush();
    bNewSubpath = true;
}

const std::string& FColumnReducedPath::Finish()
{
    Flush();
    return Data;
}

void FColumnReducedPath::Flush()
{
    if (!bPending)
    {
        return;
    }
    bPending = false;
    const bool bLowFirst = Low.Order <= High.Order;
    Append(bLowFirst ? Low : High);
    if (Low.Order != High.Order)
    {
        Append(bLowFirst ? High : Low);
    }
}

void FColumnReducedPath::Append(const FPoint& Point)
{
    // After a moveto, further pairs are linetos, so only subpaths need a letter.
    Data += bNewSubpath ? 'M' : ' ';
    bNewSubpath = false;
    AppendPlotNumber(Data, Point.X);
    Data += ' ';
    AppendPlotNumber(Data, Point.Y);
}

std::vector<FColumnRange> SampleColumnRanges(std::span<const float> Samples, int Columns,
                                             double ColumnsPerSample)
{
    std::vector<FColumnRange> Ranges(static_cast<std::size_t>(Columns > 0 ? Columns : 0));
    for (std::size_t Index = 0; Index < Samples.size(); ++Index)
    {
        const float Sample = Samples[Index];
        const double Column = std::floor(static_cast<double>(Index) * ColumnsPerSample);
        if (!std::isfinite(Sample) || !(Column >= 0.0 && Column < static_cast<double>(Ranges.size())))
        {
            continue;
        }
        FColumnRange& Range = Ranges[static_cast<std::size_t>(Column)];
        Range.Low = Range.bAny ? std::min(Range.Low, Sample) : Sample;
        Range.High = Range.bAny ? std::max(Range.High, Sample) : Sample;
        Range.bAny = true;
    }
    return Ranges;
}
