#pragma once

#include "CoreMinimal.h"

#include <sndfile.h>

#include <span>

// The lipsync protocol carries WAV, and servers take mono or stereo PCM of 16, 24
// or 32 bits or float. Such a file is sent exactly as it is; any other sound is
// sent as the WAV that PcmWav writes.
bool IsSentAsItIs(const SF_INFO& Info);

// Mono samples in -1..1 as a 16-bit PCM WAV file written by libsndfile; empty when
// libsndfile cannot write it.
TArray<uint8> PcmWav(std::span<const float> Mono, int SampleRate);
