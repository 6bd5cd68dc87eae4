#pragma once

#include "CoreMinimal.h"

#include <span>
#include <string>

// Whether Bytes begin with a RIFF/WAVE header.
bool IsRiffWave(std::span<const uint8> Bytes);

// Walks the RIFF/WAVE chunk list up to the first "fmt " and "data" chunks, never
// reading past Bytes. libsndfile plays what there is of a data chunk that runs past
// the end of the file, and refuses 0 Hz only as "SF_INFO struct incomplete", so
// these are caught here and said plainly. Returns the problem (without the file's
// name), or an empty string when the layout is sound.
std::string CheckWavLayout(std::span<const uint8> Bytes);
