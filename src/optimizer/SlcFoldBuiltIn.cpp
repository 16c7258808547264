// Computes foldable built-ins of constants: the functions of the run time again, in single
// precision and with its rules where mathematics has no answer (a root of a negative number is 0).
// An argument without any value, as asin(2), gives no number, which the caller leaves to run time.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcConvertConstOp, ...), and by all levels
// against each other in tests/random.

#include "optimizer/SlcFoldBuiltIn.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr float k_radiansPerDegree = 0.01745329238474369F;
constexpr float k_degreesPerRadian = 57.2957763671875F;
constexpr float k_pi = 3.1415927410125732F;

using Arguments = std::span<const float>;

float Acos(Arguments a)
{
    if (a[0] < -1)
        return k_pi;
    return a[0] > 1 ? 0.0F : std::acos(a[0]);
}

float Pow(Arguments a)
{
    if (a[0] == 0)
        return 0;
    if (a[0] < 0 && std::ceil(a[1]) != a[1])
        return 0;
    return std::pow(a[0], a[1]);
}

float Log2(Arguments a)
{
    return a[0] <= 0 || a[1] <= 0 || a[1] == 1 ? 0.0F : std::log(a[0]) / std::log(a[1]);
}

float Mod(Arguments a)
{
    const float rest = a[0] - std::trunc(a[0] * (1 / a[1])) * a[1];
    return rest < 0 ? rest + std::abs(a[1]) : rest;
}

float Sign(Arguments a)
{
    if (a[0] > 0)
        return 1;
    return a[0] < 0 ? -1 : 0;
}

float Clamp(Arguments a)
{
    if (a[0] < a[1])
        return a[1];
    return a[2] < a[0] ? a[2] : a[0];
}

struct Row {
    std::string_view primitive;
    std::size_t arguments;
    float (*value)(Arguments);
};

//   primitive                 arguments  value
constexpr Row k_rows[] = {
    {"CALL_PRIM_RADIANS", 1, [](Arguments a) { return a[0] * k_radiansPerDegree; }},
    {"CALL_PRIM_DEGREES", 1, [](Arguments a) { return a[0] * k_degreesPerRadian; }},
    {"CALL_PRIM_SIN", 1, [](Arguments a) { return std::sin(a[0]); }},
    // Outside -1..1 this has no value, and the call stays in the code.
    {"CALL_PRIM_ASIN", 1, [](Arguments a) { return std::asin(a[0]); }},
    {"CALL_PRIM_COS", 1, [](Arguments a) { return std::cos(a[0]); }},
    {"CALL_PRIM_ACOS", 1, Acos},
    {"CALL_PRIM_TAN", 1, [](Arguments a) { return std::tan(a[0]); }},
    {"CALL_PRIM_ATAN", 1, [](Arguments a) { return std::atan(a[0]); }},
    {"CALL_PRIM_ATAN2", 2, [](Arguments a) { return std::atan2(a[0], a[1]); }},
    {"CALL_PRIM_POW", 2, Pow},
    {"CALL_PRIM_EXP", 1, [](Arguments a) { return std::exp(a[0]); }},
    {"CALL_PRIM_SQRT", 1, [](Arguments a) { return a[0] <= 0 ? 0.0F : std::sqrt(a[0]); }},
    {"CALL_PRIM_LOG", 1, [](Arguments a) { return a[0] <= 0 ? 0.0F : std::log(a[0]); }},
    {"CALL_PRIM_LOG2", 2, Log2},
    {"CALL_PRIM_MOD", 2, Mod},
    {"CALL_PRIM_ABS", 1, [](Arguments a) { return std::abs(a[0]); }},
    {"CALL_PRIM_SIGN", 1, Sign},
    {"CALL_PRIM_MIN2_FLOAT", 2, [](Arguments a) { return a[0] < a[1] ? a[0] : a[1]; }},
    {"CALL_PRIM_MAX2_FLOAT", 2, [](Arguments a) { return a[1] < a[0] ? a[0] : a[1]; }},
    {"CALL_PRIM_CLAMP_1D", 3, Clamp},
    {"CALL_PRIM_FLOOR", 1, [](Arguments a) { return std::floor(a[0]); }},
    {"CALL_PRIM_CEIL", 1, [](Arguments a) { return std::ceil(a[0]); }},
    {"CALL_PRIM_ROUND", 1, [](Arguments a) { return std::floor(a[0] + 0.5F); }},
    {"CALL_PRIM_STEP", 2, [](Arguments a) { return a[0] <= a[1] ? 1.0F : 0.0F; }},
    {"CALL_PRIM_INVERSESQRT", 1,
     [](Arguments a) { return a[0] <= 0 ? 0.0F : 1 / std::sqrt(a[0]); }},
};

}  // namespace

std::optional<float> SlcFoldBuiltIn(std::string_view primitive, std::span<const float> arguments)
{
    const auto row = std::find_if(std::begin(k_rows), std::end(k_rows),
                                  [&](const Row& r) { return r.primitive == primitive; });
    if (row == std::end(k_rows) || arguments.size() != row->arguments)
        return std::nullopt;
    return row->value(arguments);
}
