#pragma once

#include "icode/SlcLexType.h"
#include "sqx/SqxPrimitive.h"

/// How an instruction runs. Plain: once, or once for each point in a parallel run. Whole grid:
/// outside runs, for all points or for the points where a condition is true.
///
///     { r = cos x }            plain               CALL_PRIM_COS
///     r = normalize n          whole grid          CALL_PRIM_NORMALIZE_SIMD
///     r = normalize n if f     at the points of f  CALL_PRIM_NORMALIZE_SIMD_IF_TRUE
///
/// A plain form has no condition, since the guard around it selects the points.
struct SlcGridForm {
    bool simd = false;     // runs over the grid by itself
    SlcOperand condition;  // whole grid only: runs where this flag is true; null for all points

    [[nodiscard]] static SlcGridForm Plain() { return {false, nullptr}; }
    [[nodiscard]] static SlcGridForm Whole() { return {true, nullptr}; }
    /// Runs at the points where the varying `flag` is true, or at all points if it is null.
    [[nodiscard]] static SlcGridForm At(SlcOperand flag) { return {true, std::move(flag)}; }

    bool operator==(const SlcGridForm&) const = default;

    [[nodiscard]] SqxForm Form() const
    {
        if (!simd)
            return SqxForm::Plain;
        return condition ? SqxForm::GridWhere : SqxForm::Grid;
    }
};
