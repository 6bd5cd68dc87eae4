#include "MouthScore.h"

#include "BlendShape.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace EngineBench
{
namespace
{
using namespace LipsyncEngine;

// The thresholds of the mouth states.
constexpr float ClosedLipGap = 0.12f;
constexpr float OpenLipGap = 0.25f;
constexpr float ShapeMinimum = 0.25f;
constexpr float ShapeMargin = 0.1f;
constexpr float RestJaw = 0.12f;
constexpr float RestShape = 0.15f;

double Ratio(std::size_t Part, std::size_t Whole)
{
    return Whole == 0 ? 0.0 : static_cast<double>(Part) / static_cast<double>(Whole);
}

template <typename TCounts> std::size_t Sum(const TCounts& Counts)
{
    return std::accumulate(Counts.begin(), Counts.end(), std::size_t{0});
}

float Pair(const FFaceFrame& Frame, std::size_t Left, std::size_t Right)
{
    return 0.5f * (Frame.Weights[Left] + Frame.Weights[Right]);
}
} // namespace

FMouthState ReadMouth(const FFaceFrame& Frame)
{
    const auto& W = Frame.Weights;
    // A rig shows the lips touching while the jaw is open when mouthClose matches
    // jawOpen, so the gap between the lips is their difference.
    const float LipGap = W[EBlendShape::JawOpen] - W[EBlendShape::MouthClose];
    const float Round = W[EBlendShape::MouthFunnel] + W[EBlendShape::MouthPucker];
    const float Spread = Pair(Frame, EBlendShape::MouthStretchLeft, EBlendShape::MouthStretchRight) +
                         Pair(Frame, EBlendShape::MouthSmileLeft, EBlendShape::MouthSmileRight);
    FMouthState Mouth;
    Mouth.bClosed = LipGap < ClosedLipGap;
    Mouth.bRounded = Round >= ShapeMinimum && Round > Spread + ShapeMargin;
    Mouth.bSpread = Spread >= ShapeMinimum && Spread > Round + ShapeMargin;
    Mouth.bOpen = LipGap >= OpenLipGap && !Mouth.bRounded && !Mouth.bSpread;
    Mouth.bAtRest = W[EBlendShape::JawOpen] < RestJaw && Round < RestShape && Spread < RestShape;
    return Mouth;
}

bool Agrees(EMouthClass Class, const FMouthState& Mouth)
{
    switch (Class)
    {
    case EMouthClass::Bilabial:
        return Mouth.bClosed;
    case EMouthClass::Open:
        return Mouth.bOpen;
    case EMouthClass::Rounded:
        return Mouth.bRounded;
    case EMouthClass::Spread:
        return Mouth.bSpread;
    case EMouthClass::Silence:
        return Mouth.bAtRest;
    case EMouthClass::Count:
        break;
    }
    return false;
}

std::string DescribePredicates()
{
    return "Mouth states, with gap = jawOpen - mouthClose,\n"
           "round = mouthFunnel + mouthPucker,\n"
           "spread = mean(mouthStretchLeft/Right) + mean(mouthSmileLeft/Right):\n"
           "  closed  (p b m):        gap < 0.12\n"
           "  rounded (u: oU w):      round >= 0.25 and round > spread + 0.1\n"
           "  spread  (i: eI):        spread >= 0.25 and spread > round + 0.1\n"
           "  open    (a A: A@ 0 V):  gap >= 0.25 and neither rounded nor spread\n"
           "  rest    (silence):      jawOpen < 0.12, round < 0.15 and spread < 0.15\n"
           "Each phoneme interval is scored on the mean of the frames in its middle half\n"
           "(the frame nearest its middle when the half holds none); a frame stands for\n"
           "the time at its start.\n";
}

void FScore::Add(const FScore& Other)
{
    for (std::size_t Index = 0; Index < Hits.size(); ++Index)
    {
        Hits[Index] += Other.Hits[Index];
        Totals[Index] += Other.Totals[Index];
    }
    SpecificHits += Other.SpecificHits;
    SpecificTotal += Other.SpecificTotal;
}

double FScore::Overall() const
{
    return Ratio(Sum(Hits), Sum(Totals));
}

double FScore::OverallWithSpecificity() const
{
    return Ratio(Sum(Hits) + SpecificHits, Sum(Totals) + SpecificTotal);
}

double FScore::Specificity() const
{
    return Ratio(SpecificHits, SpecificTotal);
}

double FScore::Of(EMouthClass Class) const
{
    const auto Index = static_cast<std::size_t>(Class);
    return Ratio(Hits[Index], Totals[Index]);
}

FScore ScoreFrames(std::span<const FFaceFrame> Frames, int Fps, std::span<const FLabel> Labels)
{
    FScore Score;
    if (Frames.empty())
    {
        return Score;
    }
    const auto Last = static_cast<long>(Frames.size()) - 1;
    for (const FLabel& Label : Labels)
    {
        const double Quarter = 0.25 * (Label.EndSeconds - Label.StartSeconds);
        long First = static_cast<long>(std::ceil((Label.StartSeconds + Quarter) * Fps));
        long End = static_cast<long>(std::floor((Label.EndSeconds - Quarter) * Fps));
        if (First > End)
        {
            First = End = std::lround(0.5 * (Label.StartSeconds + Label.EndSeconds) * Fps);
        }
        First = std::clamp(First, 0L, Last);
        End = std::clamp(End, First, Last);
        FFaceFrame Mean;
        for (long Index = First; Index <= End; ++Index)
        {
            for (std::size_t Shape = 0; Shape < NumBlendShapes; ++Shape)
            {
                Mean.Weights[Shape] += Frames[Index].Weights[Shape] / static_cast<float>(End - First + 1);
            }
        }
        const auto Class = static_cast<std::size_t>(Label.Class);
        ++Score.Totals[Class];
        const FMouthState Mouth = ReadMouth(Mean);
        Score.Hits[Class] += Agrees(Label.Class, Mouth) ? 1 : 0;
        if (Label.Class == EMouthClass::Rounded || Label.Class == EMouthClass::Spread)
        {
            ++Score.SpecificTotal;
            Score.SpecificHits +=
                (Label.Class == EMouthClass::Rounded ? !Mouth.bSpread : !Mouth.bRounded) ? 1 : 0;
        }
    }
    return Score;
}

} // namespace EngineBench
