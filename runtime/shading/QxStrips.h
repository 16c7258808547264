#pragma once

#include "QxValues.h"

// Strips: blocks of points whose values stand beside each other on the stack, triples component by
// component. Nothing else can overlap them, so that loops over a strip become loops of vectors.

constexpr unsigned int k_qxStrip = 64;

/// Before a loop that runs few times: compilers would make many copies of its body.
#ifdef __clang__
#define QX_ONE_BY_ONE _Pragma("clang loop unroll(disable) vectorize(disable)")
#else
#define QX_ONE_BY_ONE _Pragma("GCC unroll 1")
#endif

/// Numbers of a strip.
struct QxNumbers {
    alignas(32) float at[k_qxStrip];
};

/// Triples of a strip.
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
