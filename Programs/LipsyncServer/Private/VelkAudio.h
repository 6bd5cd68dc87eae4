#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// A chunk's mono speech at Rate as exactly Count samples of 16-bit PCM at the
// link's 16 kHz. Count comes from the stream's clock, so that chunk after chunk
// the samples sent add up to the stream's duration.
std::vector<std::int16_t> LinkAudio(std::span<const float> Samples, int Rate, std::size_t Count);
