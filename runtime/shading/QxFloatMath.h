#pragma once

// What shaders need of <cmath>, for floats. The header itself, with all that it brings along, would
// be a third of what is read to compile a small shader.

namespace qxmath {

inline float Abs(float x) { return __builtin_fabsf(x); }
inline float Acos(float x) { return __builtin_acosf(x); }
inline float Asin(float x) { return __builtin_asinf(x); }
inline float Atan(float x) { return __builtin_atanf(x); }
inline float Atan2(float y, float x) { return __builtin_atan2f(y, x); }
inline float Ceil(float x) { return __builtin_ceilf(x); }
inline float Cos(float x) { return __builtin_cosf(x); }
inline float Erfc(float x) { return __builtin_erfcf(x); }
inline float Exp(float x) { return __builtin_expf(x); }
inline float Floor(float x) { return __builtin_floorf(x); }
inline float Log(float x) { return __builtin_logf(x); }
inline float Pow(float x, float y) { return __builtin_powf(x, y); }
inline float Sin(float x) { return __builtin_sinf(x); }
inline float Sqrt(float x) { return __builtin_sqrtf(x); }
inline float Tan(float x) { return __builtin_tanf(x); }
inline float Trunc(float x) { return __builtin_truncf(x); }

// Of double precision.
inline double Abs(double x) { return __builtin_fabs(x); }
inline double Cos(double x) { return __builtin_cos(x); }
inline double Sqrt(double x) { return __builtin_sqrt(x); }
inline double Trunc(double x) { return __builtin_trunc(x); }

}  // namespace qxmath
