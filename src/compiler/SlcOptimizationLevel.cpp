// A level sets the flags of its own and of each lower level, and clears those of higher levels, so
// that the result does not depend on a level that was set before. The check of array indices has no
// table: only level 3 clears it.
//
// Tested by tests/compiler/SlcOptimizationLevelTest.cpp.

#include "compiler/SlcOptimizationLevel.h"

#include <span>

namespace {

using Flag = bool SlcOptionsControl::*;

// The flags that each level sets in addition to those of the level below.
constexpr Flag k_level1Flags[] = {
    &SlcOptionsControl::m_simdInstructions, &SlcOptionsControl::m_regroupParallelBlocks,
    &SlcOptionsControl::m_assignInPlace,    &SlcOptionsControl::m_reuseTempVars,
    &SlcOptionsControl::m_reuseBoolFlags,
};
constexpr Flag k_level2Flags[] = {
    &SlcOptionsControl::m_deadCodeElimination,   &SlcOptionsControl::m_optimizeBasicBlocks,
    &SlcOptionsControl::m_convertConstOps,       &SlcOptionsControl::m_copyPropagation,
    &SlcOptionsControl::m_blockOptimizerEnabled, &SlcOptionsControl::m_convertTmpVarDetail,
    &SlcOptionsControl::m_reduceNumberTmps,
};
constexpr Flag k_level3Flags[] = {
    &SlcOptionsControl::m_codeMotion,
    &SlcOptionsControl::m_aggressiveSIMD,
};

void SetFlags(std::span<const Flag> flags, bool value, SlcOptionsControl& options)
{
    for (const Flag flag : flags)
        options.*flag = value;
}

}  // namespace

void SetOptimizationLevel(int level, SlcOptionsControl& options)
{
    if (level < 0 || level > 3)
        return;
    options.m_checkArrayBounds = level < 3;
    SetFlags(k_level1Flags, level >= 1, options);
    SetFlags(k_level2Flags, level >= 2, options);
    SetFlags(k_level3Flags, level >= 3, options);
}
