#pragma once

#include "CoreTypes.h"

#include <atomic>

struct CORE_API FDebug
{
    // Reports a failed non-fatal assertion through the log; execution goes on.
    static void EnsureFailed(const char* Expr, const char* File, int32 Line);
    // Reports a broken invariant and stops the process.
    [[noreturn]] static void CheckFailed(const char* Expr, const char* File, int32 Line);
};

// Non-fatal assertion: evaluates to Expr; the first failure at each call site is
// reported, later ones at the same site stay silent.
#define ORV_ENSURE(Expr)                                                                                     \
    (                                                                                                        \
        [&]() -> bool                                                                                        \
        {                                                                                                    \
            if (Expr)                                                                                        \
            {                                                                                                \
                return true;                                                                                 \
            }                                                                                                \
            static std::atomic<bool> bReported{false};                                                       \
            if (!bReported.exchange(true))                                                                   \
            {                                                                                                \
                FDebug::EnsureFailed(#Expr, __FILE__, __LINE__);                                             \
            }                                                                                                \
            return false;                                                                                    \
        }())

// Fatal assertion for programming errors (an index out of range, an unbound delegate executed).
#define ORV_CHECK(Expr)                                                                                      \
    do                                                                                                       \
    {                                                                                                        \
        if (!(Expr)) [[unlikely]]                                                                            \
        {                                                                                                    \
            FDebug::CheckFailed(#Expr, __FILE__, __LINE__);                                                  \
        }                                                                                                    \
    } while (0)
