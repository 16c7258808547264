#pragma once

#include "QxElementary.h"

// The functions of <cmath> that shaders need and QxElementary.h does not define. With everything
// that it includes, <cmath> of libstdc++ and C++17 is twice as long as all other text that is read
// to compile a small shader.

namespace qxmath {

// clang-format off
inline float Abs(float x) { return __builtin_fabsf(x); }
inline float Ceil(float x) { return __builtin_ceilf(x); }
inline float Erfc(float x) { return __builtin_erfcf(x); }
inline float Floor(float x) { return __builtin_floorf(x); }
inline float Sqrt(float x) { return __builtin_sqrtf(x); }
inline float Trunc(float x) { return __builtin_truncf(x); }

// In double precision.
inline double Abs(double x) { return __builtin_fabs(x); }
inline double Cos(double x) { return __builtin_cos(x); }
inline double Sqrt(double x) { return __builtin_sqrt(x); }
inline double Trunc(double x) { return __builtin_trunc(x); }
// clang-format on

}  // namespace qxmath
