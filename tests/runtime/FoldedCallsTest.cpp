// Checks that the compiler uses the run time's functions to fold calls with constant arguments.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "optimizer/SlcFoldBuiltIn.h"
#include "sqx/SqxCard.h"

TEST(FoldedCalls, CoverEveryFoldableFunctionOfNumbers)
{
    int count = 0;
    for (const SqxCard& card : SqxCards()) {
        const auto formals = card.Formals();
        if (!card.isFoldable || std::any_of(formals.begin(), formals.end(), [](const auto& formal) {
                return formal.type != SqxCardType::Float;
            }))
            continue;
        ++count;
        const auto folded =
            SlcFoldBuiltIn(card.primitive, std::vector<float>(formals.size(), 0.5F));
        EXPECT_TRUE(folded && std::isfinite(*folded)) << card.text;
    }
    EXPECT_GE(count, 25);
    EXPECT_FALSE(SlcFoldBuiltIn(SqxPrimitive::CALL_PRIM_SMOOTHSTEP, std::vector<float>(3, 0.5F)));
}

TEST(FoldedCalls, HaveTheValuesOfTheRunTime)
{
    static const struct {
        SqxPrimitive primitive;
        float value;
        std::vector<float> arguments;
    } cases[] = {
        {SqxPrimitive::CALL_PRIM_POW, 0, {-8, 0.5F}},  // a root of a negative number
        {SqxPrimitive::CALL_PRIM_POW, 0, {0, -1}},
        {SqxPrimitive::CALL_PRIM_SQRT, 0, {-1}},
        {SqxPrimitive::CALL_PRIM_LOG2, 3, {8, 2}},
        {SqxPrimitive::CALL_PRIM_MOD, 1.5F, {-2.5F, 2}},
        {SqxPrimitive::CALL_PRIM_ACOS, 0, {2}},
        {SqxPrimitive::CALL_PRIM_ROUND, -2, {-2.5F}},
        {SqxPrimitive::CALL_PRIM_STEP, 1, {1, 1}},
        {SqxPrimitive::CALL_PRIM_CLAMP_1D, 1, {5, 0, 1}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(SlcFoldBuiltIn(c.primitive, c.arguments), c.value)
            << SqxPrimitiveName(c.primitive);
    // No angle has this sine. Folding yields NaN, so the optimizer leaves the call to the run time,
    // which clamps the argument.
    const auto none = SlcFoldBuiltIn(SqxPrimitive::CALL_PRIM_ASIN, std::vector<float>{2});
    EXPECT_TRUE(none && !std::isfinite(*none));
}
