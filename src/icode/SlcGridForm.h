#pragma once

#include <string_view>

#include "icode/SlcLexType.h"

/// How an instruction runs: plain, once or at each point of the parallel run that it stands in; or
/// over the whole grid by itself, outside of runs, for all points or for those of a condition.
///
///     { r = cos x }            plain               CALL_PRIM_COS
///     r = normalize n          whole grid          CALL_PRIM_NORMALIZE_SIMD
///     r = normalize n if f     at the points of f  CALL_PRIM_NORMALIZE_SIMD_IF_TRUE
///
/// A plain form has no condition: the guard of its block limits it.
struct SlcGridForm {
    bool simd = false;     // runs over the grid by itself
    SlcOperand condition;  // the points that it is then limited to; null for all

    /// Once, or at each point of a run; and over all points.
    [[nodiscard]] static SlcGridForm Plain() { return {false, nullptr}; }
    [[nodiscard]] static SlcGridForm Whole() { return {true, nullptr}; }
    /// At the points where the varying `flag` is true; at all if it is null.
    [[nodiscard]] static SlcGridForm At(SlcOperand flag) { return {true, std::move(flag)}; }

    bool operator==(const SlcGridForm&) const = default;

    /// What stands behind the name of the primitive.
    [[nodiscard]] std::string_view Suffix() const
    {
        if (!simd)
            return {};
        return condition ? "_SIMD_IF_TRUE" : "_SIMD";
    }
};
