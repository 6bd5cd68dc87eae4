#include "AnimationSvg.h"

#include "MarkupText.h"
#include "PlotColumns.h"
#include "PlotTicks.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace
{
constexpr double Width = 1200.0;
constexpr double Left = 64.0;
constexpr double Right = Width - 24.0;
constexpr double PlotWidth = Right - Left;
constexpr double LegendY = 50.0;
constexpr double CurvesTop = 66.0;
constexpr double CurvesBottom = CurvesTop + 280.0;
constexpr double WaveTop = CurvesBottom + 16.0;
constexpr double WaveBottom = WaveTop + 90.0;
constexpr int MaxTimeTicks = 12;

struct FMouthCurve
{
    const char* Label;
    const char* Colour;
    const TCHAR* Shapes[2];
};

// The shapes that carry most of what a viewer reads as speech.
constexpr FMouthCurve MouthCurves[] = {
    {"jawOpen", "#1f77b4", {u"jawOpen", nullptr}},
    {"mouthClose", "#ff7f0e", {u"mouthClose", nullptr}},
    {"mouthFunnel", "#2ca02c", {u"mouthFunnel", nullptr}},
    {"mouthPucker", "#d62728", {u"mouthPucker", nullptr}},
    {"smile", "#9467bd", {u"mouthSmileLeft", u"mouthSmileRight"}},
    {"stretch", "#8c564b", {u"mouthStretchLeft", u"mouthStretchRight"}},
};

struct FDrawnCurve
{
    const FMouthCurve* Curve;
    std::vector<int32> Columns;
};

// Where frames and samples sit on the time axis. Without a frame rate the axis
// counts frames and the audio is spread over them.
struct FTimeline
{
    double FrameStep = 1.0;
    double SampleStep = 0.0;
    double Span = 1.0;
    bool bSeconds = false;

    double X(double Time) const { return Left + Time / Span * PlotWidth; }
};

FTimeline MakeTimeline(const FCadrelZELResponse& Animation, std::size_t SampleCount, int SampleRate)
{
    FTimeline Timeline;
    Timeline.bSeconds = Animation.FPS > 0;
    Timeline.FrameStep = Timeline.bSeconds ? 1.0 / Animation.FPS : 1.0;
    const double FrameSpan = Animation.Frames.Num() * Timeline.FrameStep;
    if (SampleCount > 0 && SampleRate > 0)
    {
        Timeline.SampleStep = Timeline.bSeconds ? 1.0 / SampleRate : std::max(FrameSpan, 1.0) / SampleCount;
    }
    Timeline.Span = std::max({FrameSpan, SampleCount * Timeline.SampleStep, Timeline.FrameStep});
    return Timeline;
}

std::vector<FDrawnCurve> FindCurves(const FCadrelZELResponse& Animation)
{
    std::vector<FDrawnCurve> Drawn;
    for (const FMouthCurve& Curve : MouthCurves)
    {
        FDrawnCurve Entry{&Curve, {}};
        for (const TCHAR* Shape : Curve.Shapes)
        {
            const int32 Column = Shape ? Animation.BlendShapesNames.Find(FString(Shape)) : INDEX_NONE;
            if (Column != INDEX_NONE)
            {
                Entry.Columns.push_back(Column);
            }
        }
        if (!Entry.Columns.empty())
        {
            Drawn.push_back(std::move(Entry));
        }
    }
    return Drawn;
}

std::optional<double> CurveValue(const FCadrelFaceFrames& Frame, const std::vector<int32>& Columns)
{
    double Sum = 0.0;
    for (const int32 Column : Columns)
    {
        if (!Frame.Blendshapes.IsValidIndex(Column) || !std::isfinite(Frame.Blendshapes[Column]))
        {
            return std::nullopt;
        }
        Sum += Frame.Blendshapes[Column];
    }
    return Sum / static_cast<double>(Columns.size());
}

double WeightY(double Weight)
{
    // Clamped just past the plot, so a wild weight is clipped instead of making a huge coordinate.
    return CurvesBottom - std::clamp(Weight, -0.02, 1.02) * (CurvesBottom - CurvesTop);
}

void AppendCurve(std::string& Out, const FCadrelZELResponse& Animation, const FTimeline& Timeline,
                 const FDrawnCurve& Drawn)
{
    FColumnReducedPath Path;
    for (int32 Index = 0; Index < Animation.Frames.Num(); ++Index)
    {
        const std::optional<double> Value = CurveValue(Animation.Frames[Index], Drawn.Columns);
        if (Value)
        {
            Path.Add(Timeline.X(Index * Timeline.FrameStep), WeightY(*Value));
        }
        else
        {
            Path.Break();
        }
    }
    Out += "<path stroke=\"" + std::string(Drawn.Curve->Colour) + "\" d=\"" + Path.Finish() + "\"/>\n";
}

void AppendWaveform(std::string& Out, std::span<const float> Mono, const FTimeline& Timeline)
{
    const int Columns = static_cast<int>(PlotWidth);
    const std::vector<FColumnRange> Ranges =
        SampleColumnRanges(Mono, Columns, Timeline.SampleStep / Timeline.Span * PlotWidth);
    float Peak = 0.0f;
    for (const FColumnRange& Range : Ranges)
    {
        Peak = std::max({Peak, std::abs(Range.Low), std::abs(Range.High)});
    }
    // Scaled to the loudest sample: quiet recordings keep a readable shape.
    const double Middle = (WaveTop + WaveBottom) / 2.0;
    const double Scale = Peak > 0.0f ? (WaveBottom - WaveTop) / 2.0 / Peak : 0.0;
    std::string Data;
    auto AppendEdge = [&](int Column, float Sample)
    {
        Data += Data.empty() ? 'M' : ' ';
        AppendPlotNumber(Data, Left + Column + 0.5);
        Data += ' ';
        AppendPlotNumber(Data, Middle - Sample * Scale);
    };
    for (int Column = 0; Column < Columns; ++Column)
    {
        if (Ranges[Column].bAny)
        {
            AppendEdge(Column, Ranges[Column].High);
        }
    }
    for (int Column = Columns - 1; Column >= 0; --Column)
    {
        if (Ranges[Column].bAny)
        {
            AppendEdge(Column, Ranges[Column].Low);
        }
    }
    Out += "<text x=\"" + std::to_string(static_cast<int>(Left) - 8) + "\" y=\"" +
           std::to_string(static_cast<int>(Middle) + 4) + "\" text-anchor=\"end\">audio</text>\n";
    if (!Data.empty())
    {
        Out += "<path fill=\"#9a9a9a\" stroke=\"#9a9a9a\" stroke-width=\"0.6\" d=\"" + Data + "Z\"/>\n";
    }
}

std::string Number(double Value)
{
    std::string Text;
    AppendPlotNumber(Text, Value);
    return Text;
}

void AppendWeightAxis(std::string& Out)
{
    Out += "<g stroke=\"#e4e4e4\">\n";
    for (const double Weight : {0.0, 0.25, 0.5, 0.75, 1.0})
    {
        const std::string Y = Number(WeightY(Weight));
        Out += "<line x1=\"" + Number(Left) + "\" x2=\"" + Number(Right) + "\" y1=\"" + Y + "\" y2=\"" + Y +
               "\"/>\n";
    }
    Out += "</g>\n<g text-anchor=\"end\">\n";
    for (const auto& [Weight, Label] : {std::pair{0.0, "0"}, std::pair{0.5, "0.5"}, std::pair{1.0, "1"}})
    {
        Out += "<text x=\"" + Number(Left - 6) + "\" y=\"" + Number(WeightY(Weight) + 4) + "\">" + Label +
               "</text>\n";
    }
    Out += "</g>\n<text transform=\"translate(18 " + Number((CurvesTop + CurvesBottom) / 2) +
           ") rotate(-90)\" text-anchor=\"middle\">weight</text>\n";
}

void AppendTimeAxis(std::string& Out, const FTimeline& Timeline, double AxisY)
{
    const double Step = TickStep(Timeline.Span, MaxTimeTicks);
    std::string Grid = "<g stroke=\"#e4e4e4\">\n";
    std::string Labels = "<g text-anchor=\"middle\">\n";
    for (int Tick = 0; Tick * Step <= Timeline.Span * (1.0 + 1e-9); ++Tick)
    {
        const std::string X = Number(Timeline.X(Tick * Step));
        Grid += "<line x1=\"" + X + "\" x2=\"" + X + "\" y1=\"" + Number(CurvesTop) + "\" y2=\"" +
                Number(AxisY + 5) + "\"/>\n";
        Labels += "<text x=\"" + X + "\" y=\"" + Number(AxisY + 19) + "\">" + TickLabel(Tick * Step, Step) +
                  "</text>\n";
    }
    Out += Grid + "</g>\n" + Labels + "</g>\n";
    Out += "<line stroke=\"#444\" x1=\"" + Number(Left) + "\" x2=\"" + Number(Right) + "\" y1=\"" +
           Number(AxisY) + "\" y2=\"" + Number(AxisY) + "\"/>\n";
    Out += "<text x=\"" + Number((Left + Right) / 2) + "\" y=\"" + Number(AxisY + 38) +
           "\" text-anchor=\"middle\">" + (Timeline.bSeconds ? "time (s)" : "frame") + "</text>\n";
}

void AppendLegend(std::string& Out, const std::vector<FDrawnCurve>& Drawn)
{
    if (Drawn.empty())
    {
        Out += "<text x=\"" + Number(Left) + "\" y=\"" + Number(LegendY + 4) +
               "\" fill=\"#666\">the animation names none of the mouth shapes plotted here</text>\n";
        return;
    }
    double X = Left;
    for (const FDrawnCurve& Entry : Drawn)
    {
        const std::string Label = Entry.Curve->Label;
        Out += "<line stroke=\"" + std::string(Entry.Curve->Colour) + "\" stroke-width=\"3\" x1=\"" +
               Number(X) + "\" x2=\"" + Number(X + 18) + "\" y1=\"" + Number(LegendY) + "\" y2=\"" +
               Number(LegendY) + "\"/>\n<text x=\"" + Number(X + 24) + "\" y=\"" + Number(LegendY + 4) +
               "\">" + Label + "</text>\n";
        X += 24 + 7.5 * static_cast<double>(Label.size()) + 22;
    }
}
} // namespace

std::string AnimationToSvg(const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                           const std::string& Title)
{
    const FTimeline Timeline = MakeTimeline(Animation, Mono.size(), SampleRate);
    const bool bWaveform = Timeline.SampleStep > 0.0;
    const double AxisY = bWaveform ? WaveBottom : CurvesBottom;
    const std::string Height = Number(AxisY + 50);
    const std::string EscapedTitle = EscapeMarkup(Title);
    const std::vector<FDrawnCurve> Drawn = FindCurves(Animation);

    std::string Out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
                      "width=\"" +
                      Number(Width) + "\" height=\"" + Height + "\" viewBox=\"0 0 " + Number(Width) + " " +
                      Height + "\" font-family=\"sans-serif\" font-size=\"12\">\n";
    Out += "<title>" + EscapedTitle + "</title>\n<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
    Out += "<text x=\"" + Number(Left) + "\" y=\"26\" font-size=\"16\" font-weight=\"bold\">" + EscapedTitle +
           "</text>\n";
    Out += "<defs><clipPath id=\"curves\"><rect x=\"" + Number(Left) + "\" y=\"" + Number(CurvesTop) +
           "\" width=\"" + Number(PlotWidth) + "\" height=\"" + Number(CurvesBottom - CurvesTop) +
           "\"/></clipPath></defs>\n";
    AppendTimeAxis(Out, Timeline, AxisY);
    AppendWeightAxis(Out);
    AppendLegend(Out, Drawn);
    // Thin, slightly see-through lines once frames crowd the pixels, so that overlapping curves stay
    // apart; drawn last to first so that the jaw, the most telling, lies on top.
    const bool bCrowded = Animation.Frames.Num() > static_cast<int32>(PlotWidth);
    Out += std::string("<g fill=\"none\" stroke-width=\"") + (bCrowded ? "1" : "1.5") +
           "\" stroke-opacity=\"0.85\" stroke-linejoin=\"round\" clip-path=\"url(#curves)\">\n";
    for (auto Entry = Drawn.rbegin(); Entry != Drawn.rend(); ++Entry)
    {
        AppendCurve(Out, Animation, Timeline, *Entry);
    }
    Out += "</g>\n";
    if (bWaveform)
    {
        AppendWaveform(Out, Mono, Timeline);
    }
    Out += "</svg>\n";
    return Out;
}
