// The compiler evaluates calls of constants to what the run time would.

#include <gtest/gtest.h>

#include <cmath>

#include "QxMath.h"
#include "optimizer/SlcFoldBuiltIn.h"

namespace {

using A = std::span<const float>;

struct Primitive {
    const char* name;
    std::size_t arguments;
    float (*value)(A);
};

const Primitive k_primitives[] = {
    {"RADIANS", 1, [](A a) { return QxRadians(a[0]); }},
    {"DEGREES", 1, [](A a) { return QxDegrees(a[0]); }},
    {"ASIN", 1, [](A a) { return QxAsin(a[0]); }},
    {"ACOS", 1, [](A a) { return QxAcos(a[0]); }},
    {"POW", 2, [](A a) { return QxPow(a[0], a[1]); }},
    {"SQRT", 1, [](A a) { return QxSqrt(a[0]); }},
    {"INVERSESQRT", 1, [](A a) { return QxInverseSqrt(a[0]); }},
    {"LOG", 1, [](A a) { return QxLog(a[0]); }},
    {"LOG2", 2, [](A a) { return QxLog(a[0], a[1]); }},
    {"MOD", 2, [](A a) { return QxMod(a[0], a[1]); }},
    {"SIGN", 1, [](A a) { return QxSign(a[0]); }},
    {"MIN2_FLOAT", 2, [](A a) { return QxMin(a[0], a[1]); }},
    {"MAX2_FLOAT", 2, [](A a) { return QxMax(a[0], a[1]); }},
    {"CLAMP_1D", 3, [](A a) { return QxClamp(a[0], a[1], a[2]); }},
    {"ROUND", 1, [](A a) { return QxRound(a[0]); }},
    {"STEP", 2, [](A a) { return QxStep(a[0], a[1]); }},
};

constexpr float k_values[] = {0,       -0.0F, 1,    -1,    0.5F,  -0.5F, 2,
                              -3,      0.1F,  0.3F, 5.3F,  49,    90,    0.49999997F,
                              8388609, 1e-9F, 7,    -2.5F, 1e30F, 1.25F, -1e-3F};

void Compare(const Primitive& primitive, std::vector<float>& arguments)
{
    if (arguments.size() < primitive.arguments) {
        for (const float value : k_values) {
            arguments.push_back(value);
            Compare(primitive, arguments);
            arguments.pop_back();
        }
        return;
    }
    const auto folded = SlcFoldBuiltIn(std::string("CALL_PRIM_") + primitive.name, arguments);
    ASSERT_TRUE(folded) << primitive.name;
    // What is not finite stays in the code.
    if (std::isfinite(*folded)) {
        EXPECT_EQ(*folded, primitive.value(arguments))
            << primitive.name << ' ' << testing::PrintToString(arguments);
    }
}

}  // namespace

TEST(FoldedCalls, GiveWhatTheRunTimeGives)
{
    for (const Primitive& primitive : k_primitives) {
        std::vector<float> arguments;
        Compare(primitive, arguments);
    }
}
