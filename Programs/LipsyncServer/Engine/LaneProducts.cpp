#include "LaneProducts.h"

#include <cstring>

namespace LipsyncEngine
{
namespace
{
// Eight floats as one value: one register with AVX2, two without.
using FLaneVector = float __attribute__((vector_size(Lanes * sizeof(float))));

// Rows summed side by side. One row's sum is a chain of additions, each waiting for
// the last; independent rows keep the adder busy while a chain waits, and share
// each load of the frames' values. Each row still sums column by column.
constexpr std::size_t RowBlock = 4;

template <std::size_t Count>
[[gnu::always_inline]] inline void MultiplyRows(const float* Weights, std::size_t Columns, const float* In,
                                                float* Sums)
{
    FLaneVector Sum[Count] = {};
    for (std::size_t Column = 0; Column < Columns; ++Column)
    {
        FLaneVector Values;
        std::memcpy(&Values, In + Column * Lanes, sizeof(Values));
        for (std::size_t Row = 0; Row < Count; ++Row)
        {
            Sum[Row] += Weights[Row * Columns + Column] * Values;
        }
    }
    std::memcpy(Sums, Sum, sizeof(Sum));
}

// Inlined into each build below, so that each uses its own instruction set.
[[gnu::always_inline]] inline void MultiplyLanesPortable(const float* Weights, std::size_t Rows,
                                                         std::size_t Columns, const float* In, float* Sums)
{
    std::size_t Row = 0;
    for (; Row + RowBlock <= Rows; Row += RowBlock)
    {
        MultiplyRows<RowBlock>(Weights + Row * Columns, Columns, In, Sums + Row * Lanes);
    }
    for (; Row < Rows; ++Row)
    {
        MultiplyRows<1>(Weights + Row * Columns, Columns, In, Sums + Row * Lanes);
    }
}

void MultiplyLanesBaseline(const float* Weights, std::size_t Rows, std::size_t Columns, const float* In,
                           float* Sums)
{
    MultiplyLanesPortable(Weights, Rows, Columns, In, Sums);
}

#if defined(__x86_64__)
[[gnu::target("avx2")]] void MultiplyLanesAvx2(const float* Weights, std::size_t Rows, std::size_t Columns,
                                               const float* In, float* Sums)
{
    MultiplyLanesPortable(Weights, Rows, Columns, In, Sums);
}

using FMultiply = void (*)(const float*, std::size_t, std::size_t, const float*, float*);

FMultiply ChooseMultiply()
{
    __builtin_cpu_init();
    return __builtin_cpu_supports("avx2") ? MultiplyLanesAvx2 : MultiplyLanesBaseline;
}
#endif
} // namespace

void MultiplyLanes(const float* Weights, std::size_t Rows, std::size_t Columns, const float* In, float* Sums)
{
#if defined(__x86_64__)
    static const FMultiply Multiply = ChooseMultiply();
    Multiply(Weights, Rows, Columns, In, Sums);
#else
    MultiplyLanesBaseline(Weights, Rows, Columns, In, Sums);
#endif
}
} // namespace LipsyncEngine
