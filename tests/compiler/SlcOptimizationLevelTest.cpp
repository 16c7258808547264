#include "compiler/SlcOptimizationLevel.h"

#include <gtest/gtest.h>

namespace {

TEST(SlcOptimizationLevel, SetsTheFlagsOfEachLevel)
{
    using Options = SlcOptionsControl;
    struct Case {
        bool Options::*flag;
        const char* atLevels;  // one digit per level, "1" if it sets the flag
    };
    static const Case cases[] = {
        {&Options::m_checkArrayBounds, "1110"},
        {&Options::m_simdInstructions, "0111"},
        {&Options::m_regroupParallelBlocks, "0111"},
        {&Options::m_assignInPlace, "0111"},
        {&Options::m_reuseTempVars, "0111"},
        {&Options::m_reuseBoolFlags, "0111"},
        {&Options::m_deadCodeElimination, "0011"},
        {&Options::m_optimizeBasicBlocks, "0011"},
        {&Options::m_convertConstOps, "0011"},
        {&Options::m_copyPropagation, "0011"},
        {&Options::m_blockOptimizerEnabled, "0011"},
        {&Options::m_convertTmpVarDetail, "0011"},
        {&Options::m_reduceNumberTmps, "0011"},
        {&Options::m_codeMotion, "0001"},
        {&Options::m_aggressiveSIMD, "0001"},
        {&Options::m_useShadeops, "1111"},
        {&Options::m_strict, "0000"},
        {&Options::m_printICode, "0000"},
        {&Options::m_printBlockICode, "0000"},
        {&Options::m_createLocalVars, "1111"},
    };
    SlcOptionsControl options;
    for (int level = 0; level < 4; ++level) {
        SetOptimizationLevel(level, options);
        for (const Case& c : cases)
            EXPECT_EQ(options.*c.flag, c.atLevels[level] == '1')
                << "level " << level << ", row " << &c - cases;
    }
    SetOptimizationLevel(0, options);
    SetOptimizationLevel(4, options);
    EXPECT_FALSE(options.m_simdInstructions);
}

}  // namespace
