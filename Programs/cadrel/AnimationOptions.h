#pragma once

#include "CadrelBlendShapeType.h"

#include <CLI/CLI.hpp>

#include <string>

// What the animation is to show, as every command that asks for one takes it.
struct FAnimationOptions
{
    std::string Emotion = "calm";
    bool bEyeMovement = false;
    bool bNeckMovement = false;
};

void AddAnimationOptions(CLI::App& Command, FAnimationOptions& Options);

// Fills the request's animation fields; the rest keeps the record's defaults.
void ApplyAnimationOptions(const FAnimationOptions& Options, FCadrelZELRequest& Request);
