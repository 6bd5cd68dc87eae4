#pragma once

#include "CadrelBlendShapeType.h"

#include <CLI/CLI.hpp>

#include <span>
#include <string>
#include <vector>

// Which files a command writes for each animation, and where.
struct FOutputOptions
{
    std::string Directory = ".";
    std::string Formats = "json,csv,svg,html";
};

void AddOutputOptions(CLI::App& Command, FOutputOptions& Options);

// Makes the output folder when it is missing. False with one line in OutError.
bool PrepareOutputDirectory(const FOutputOptions& Options, std::string& OutError);

// The file name an input gives its outputs: its base name without extension.
std::string OutputStem(const std::string& InputPath);

// Writes STEM.json, STEM.csv, STEM.svg and STEM.html, as many as the options ask
// for, each through a temporary file that is renamed into place. Mono at SampleRate
// draws the waveform under the curves and is the page's sound; empty gives neither. The paths written go to
// OutPaths; false with one line in OutError at the first file that fails.
bool WriteAnimationFiles(const FOutputOptions& Options, const std::string& Stem,
                         const FCadrelZELResponse& Animation, std::span<const float> Mono, int SampleRate,
                         std::vector<std::string>& OutPaths, std::string& OutError);
