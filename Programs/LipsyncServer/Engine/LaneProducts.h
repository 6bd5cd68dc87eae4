#pragma once

#include <cstddef>

namespace LipsyncEngine
{
// Frames go through the network eight at a time, each layer's values stored feature
// by feature with the eight frames side by side.
inline constexpr std::size_t Lanes = 8;

// Sums[Row * Lanes + Lane] = the sum over Column of Weights[Row * Columns + Column] *
// In[Column * Lanes + Lane], column by column. Every frame's sum runs in the same order
// whatever the batch, so a frame's result does not depend on how the audio was chunked
// (a library matrix product sums in an order that depends on the matrix sizes).
// Processors with AVX2 hold all eight lanes in one register, and run a copy built for
// them; it multiplies and adds apart, without fused multiply-add, so every processor
// gives the same bits.
void MultiplyLanes(const float* Weights, std::size_t Rows, std::size_t Columns, const float* In, float* Sums);
} // namespace LipsyncEngine
