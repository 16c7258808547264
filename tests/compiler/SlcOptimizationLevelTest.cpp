#include "compiler/SlcOptimizationLevel.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using Options = SlcOptionsControl;

/// Returns a digit for each optimization: "1" if its flag is set.
std::string OptimizationsOf(const Options& options)
{
    static constexpr bool Options::*flags[] = {
        &Options::m_simdInstructions,    &Options::m_regroupParallelBlocks,
        &Options::m_assignInPlace,       &Options::m_reuseTempVars,
        &Options::m_reuseBoolFlags,      &Options::m_deadCodeElimination,
        &Options::m_optimizeBasicBlocks, &Options::m_convertConstOps,
        &Options::m_copyPropagation,     &Options::m_blockOptimizerEnabled,
        &Options::m_convertTmpVarDetail, &Options::m_reduceNumberTmps,
        &Options::m_codeMotion,          &Options::m_aggressiveSIMD,
    };
    std::string digits;
    for (const auto flag : flags)
        digits += options.*flag ? '1' : '0';
    return digits;
}

std::string OptimizationsOf(int level)
{
    Options options;
    SetOptimizationLevel(level, options);
    return OptimizationsOf(options);
}

TEST(SlcOptimizationLevel, AddsOptimizationsToThoseOfTheLevelBelow)
{
    EXPECT_EQ(OptimizationsOf(0).find('1'), std::string::npos) << OptimizationsOf(0);
    EXPECT_EQ(OptimizationsOf(3).find('0'), std::string::npos) << OptimizationsOf(3);
    EXPECT_EQ(OptimizationsOf(2), OptimizationsOf(Options())) << "the default";
    for (int level = 1; level < 4; ++level) {
        const std::string below = OptimizationsOf(level - 1);
        const std::string here = OptimizationsOf(level);
        EXPECT_NE(here, below) << level;
        for (std::size_t i = 0; i < here.size(); ++i)
            EXPECT_GE(here[i], below[i]) << level << ", flag " << i;
    }
}

TEST(SlcOptimizationLevel, OverridesAnEarlierOneUnlessItIsUnknown)
{
    for (int earlier = 0; earlier < 4; ++earlier)
        for (int level = -1; level < 5; ++level) {
            Options options;
            SetOptimizationLevel(earlier, options);
            SetOptimizationLevel(level, options);
            const int expected = level < 0 || level > 3 ? earlier : level;
            EXPECT_EQ(OptimizationsOf(options), OptimizationsOf(expected)) << earlier << level;
            EXPECT_EQ(options.m_checkArrayBounds, expected < 3) << earlier << level;
        }
}

}  // namespace
