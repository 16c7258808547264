#pragma once

#include "QxValues.h"

// Strips: blocks of points whose values are contiguous on the stack, triples component by
// component. Nothing else can alias them, so loops over a strip can be vectorized.

/// The maximum number of points in a strip.
constexpr unsigned int k_qxStrip = 64;

/// Precedes a loop with few iterations, whose body compilers would otherwise copy many times.
#ifdef __clang__
#define QX_ONE_BY_ONE _Pragma("clang loop unroll(disable) vectorize(disable)")
#else
#define QX_ONE_BY_ONE _Pragma("GCC unroll 1")
#endif

/// One number for each point of a strip.
struct QxNumbers {
    alignas(32) float at[k_qxStrip];
};

/// One triple for each point of a strip.
struct QxTriples {
    QxNumbers x;
    QxNumbers y;
    QxNumbers z;

    QxVector3 At(unsigned int j) const { return {x.at[j], y.at[j], z.at[j]}; }
    void Set(unsigned int j, const QxVector3& value)
    {
        x.at[j] = value.x;
        y.at[j] = value.y;
        z.at[j] = value.z;
    }
};
