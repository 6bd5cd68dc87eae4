#include "ConversionHeap.h"

#include <climits>
#include <cstdint>
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

namespace
{
constexpr std::uintptr_t HugePage = std::uintptr_t{2} << 20;
// glibc refuses a higher threshold on 64-bit systems: larger blocks keep their
// own mappings, in small pages.
constexpr int LargestHeapBlock = 32 << 20;
constexpr int DefaultTopPad = 128 << 10;
// Smaller gaps to the first huge page are not worth a block of their own.
constexpr std::uintptr_t MinimumPad = 4096;
// Volatile, or the compiler drops a block that nothing reads.
void* volatile HeapPad = nullptr;

std::uintptr_t AlignDown(std::uintptr_t Address)
{
    return Address & ~(HugePage - 1);
}

std::uintptr_t AlignUp(std::uintptr_t Address)
{
    return AlignDown(Address + HugePage - 1);
}
} // namespace

void PrepareHeapForConversion(std::size_t Bytes)
{
    if (Bytes < HugePage || Bytes > INT_MAX / 2)
    {
        return;
    }
    const int Size = static_cast<int>(Bytes);
    mallopt(M_MMAP_THRESHOLD, LargestHeapBlock);
    mallopt(M_TRIM_THRESHOLD, 2 * Size);
    mallopt(M_TOP_PAD, Size);
    // A block larger than what is left at the heap's top makes glibc grow the heap
    // by the block and the pad in one step; freed, it leaves that room at the top.
    const auto Before = reinterpret_cast<std::uintptr_t>(sbrk(0));
    void* const Probe = std::malloc(HugePage);
    const auto Block = reinterpret_cast<std::uintptr_t>(Probe);
    const auto Grown = reinterpret_cast<std::uintptr_t>(sbrk(0));
    std::free(Probe);
    mallopt(M_TOP_PAD, DefaultTopPad);
    // Only when the block came from the heap's top and the heap grew: a sanitizer's
    // allocator leaves the program break where it was.
    const std::uintptr_t Start = AlignUp(Before);
    if (!Probe || Block >= Before || Before + Bytes > Grown || Start >= AlignDown(Grown))
    {
        return;
    }
    madvise(reinterpret_cast<void*>(Start), AlignDown(Grown) - Start, MADV_HUGEPAGE);
    // The heap up to the first huge page is taken by a block that is never used, so
    // that the conversion's first block, the export, starts on that page instead of
    // in the small pages below it. Its chunk begins where the probe's did and ends
    // one chunk header short of the page, glibc's chunks being the size asked plus
    // one word, in steps of 16 bytes.
    const std::uintptr_t Gap = Start - Block;
    if (Gap >= MinimumPad)
    {
        HeapPad = std::malloc(Gap - sizeof(std::size_t));
    }
}
#else
void PrepareHeapForConversion(std::size_t) {}
#endif
