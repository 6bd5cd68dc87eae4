#pragma once

#include <cstddef>

// Readies the C library's heap for one conversion that will hold about Bytes at
// once: the heap grows once by that much, in memory the kernel is asked to back
// with 2 MiB pages, and blocks freed meanwhile stay in it for the next ones.
//
// Converting a long take touches several times the export's size in fresh memory:
// the export, the parser's index of it, the weights and the text written. In 4 KiB
// pages, faulting that memory in costs more time than reading and writing it.
// Where the heap is not glibc's own (other C libraries, sanitizers) this does nothing.
void PrepareHeapForConversion(std::size_t Bytes);
