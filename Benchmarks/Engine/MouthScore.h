#pragma once

#include "FaceEngine.h"
#include "TestSpeech.h"

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace EngineBench
{

// The mouth states that the score reads off the weights, all defined in MouthScore.cpp.
struct FMouthState
{
    bool bClosed = false;
    bool bOpen = false;
    bool bRounded = false;
    bool bSpread = false;
    bool bAtRest = false;
};

FMouthState ReadMouth(const LipsyncEngine::FFaceFrame& Frame);

// Whether the mouth shows what the class asks for.
bool Agrees(EMouthClass Class, const FMouthState& Mouth);

// The predicates and thresholds in words, for the help text.
std::string DescribePredicates();

struct FScore
{
    std::array<std::size_t, static_cast<std::size_t>(EMouthClass::Count)> Hits{};
    std::array<std::size_t, static_cast<std::size_t>(EMouthClass::Count)> Totals{};
    // Specificity: rounded and spread vowels on which the mouth does not show the
    // other shape (rounding on a spread vowel, spreading on a rounded one).
    std::size_t SpecificHits = 0;
    std::size_t SpecificTotal = 0;

    void Add(const FScore& Other);
    double Overall() const;
    // Overall with the specificity cases counted as intervals of their own, as some
    // scorers do; a mouth that never rounds nor spreads passes all of them.
    double OverallWithSpecificity() const;
    double Of(EMouthClass Class) const;
    double Specificity() const;
};

// Scores every label on the middle half of its interval: the mean of the frames
// there (or the frame nearest its middle when none falls inside) must agree.
FScore ScoreFrames(std::span<const LipsyncEngine::FFaceFrame> Frames, int Fps,
                   std::span<const FLabel> Labels);

} // namespace EngineBench
