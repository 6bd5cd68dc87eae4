#pragma once

#include "FaceEngine.h"
#include "VisemeNetwork.h"

namespace LipsyncEngine
{

using FWeights = std::array<float, NumBlendShapes>;

// Turns the viseme shares of the recent frames into mouth weights and smooths them
// with per-shape attack and release, so that neighbouring visemes blend
// (coarticulation) and nothing jitters. One step per analysis frame.
class FMouthMapper
{
public:
    // Updates the mouth part of Weights; other shapes are left alone.
    // LevelDb is the frame's level below the recent loud speech.
    void Step(const FVisemeWeights& Visemes, float LevelDb, FWeights& Weights);

private:
    FVisemeWeights Smoothed{};
    FWeights Targets{};
};

} // namespace LipsyncEngine
