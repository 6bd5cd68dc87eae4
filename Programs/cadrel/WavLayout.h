#pragma once

#include "CoreMinimal.h"

#include <span>
#include <string>

// Walks the RIFF/WAVE chunk list up to the first "fmt " and "data" chunks, never
// reading past Bytes. libsndfile forgives a data chunk that runs past the end of
// the file (it plays what is there) and a format of 0 channels or 0 Hz is only
// found out later, so both are caught here. Returns the problem in plain words
// (without the file's name), or an empty string when the layout is sound.
std::string CheckWavLayout(std::span<const uint8> Bytes);
