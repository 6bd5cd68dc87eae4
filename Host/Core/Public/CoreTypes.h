#pragma once

#include <cstddef>
#include <cstdint>

// Fixed-width integer names and the wide character type used across the host.
using int8 = std::int8_t;
using int16 = std::int16_t;
using int32 = std::int32_t;
using int64 = std::int64_t;
using uint8 = std::uint8_t;
using uint16 = std::uint16_t;
using uint32 = std::uint32_t;
using uint64 = std::uint64_t;
using SIZE_T = std::size_t;

using ANSICHAR = char;
using UTF8CHAR = char;
using TCHAR = char16_t;

#define TEXT(x) u##x

// Everything the host and its modules export keeps default visibility, so one
// macro serves every module's *_API spelling.
#define ORV_EXPORT __attribute__((visibility("default")))
#define CORE_API ORV_EXPORT

constexpr int32 INDEX_NONE = -1;
