#pragma once

#include "icode/SlcICode.h"

/// Base of the comparisons. A flag is a boolean temporary; the language has no boolean variables.
class SlcBoolExprICode : public SlcICode {};

/// flag = left op right. The operand types select the primitive, as in arithmetic. The lowering
/// converts `&&` and `||` to conditions around the right side, with `SlcOrBoolFlagICode` for a
/// varying `||`, and `!` to inverted comparisons.
class SlcBinOpBoolExprICode : public SlcBoolExprICode {
public:
    SlcBinOpBoolExprICode(SlcOperand resultId, SlcOperand leftExpr, SlcOperand rightExpr)
        : m_resultId(std::move(resultId)),
          m_leftExpr(std::move(leftExpr)),
          m_rightExpr(std::move(rightExpr))
    {
    }

    SlcOperand m_resultId;
    SlcOperand m_leftExpr;
    SlcOperand m_rightExpr;
};

/// `left < right`
class SlcLessThenICode : public SlcICodeOf<SlcLessThenICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left <= right`
class SlcLessEqualICode : public SlcICodeOf<SlcLessEqualICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left > right`
class SlcGreaterThenICode : public SlcICodeOf<SlcGreaterThenICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left >= right`
class SlcGreaterEqualICode : public SlcICodeOf<SlcGreaterEqualICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left == right`, for any type except arrays; triples and matrices are equal if all components
/// are equal.
class SlcEqualICode : public SlcICodeOf<SlcEqualICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// `left != right`
class SlcNotEqualICode : public SlcICodeOf<SlcNotEqualICode, SlcBinOpBoolExprICode> {
public:
    using SlcICodeOf::SlcICodeOf;
};

/// Sets a uniform flag: true if a varying flag is true at any point, otherwise false. Used outside
/// parallel brackets. The uniform flag is tested by guards of uniform code, and by jumps over code
/// that no point would run.
class SlcSetUniformBoolFlagICode : public SlcICodeOf<SlcSetUniformBoolFlagICode, SlcICode> {
public:
    SlcSetUniformBoolFlagICode(SlcOperand dest, SlcOperand source)
        : m_dest(std::move(dest)),
          m_source(std::move(source))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
};

/// dest = not source over the whole grid; with `outer`: dest = outer and not source, so that dest
/// is false wherever `outer` is. Used outside parallel brackets, for example for the `else` of a
/// varying condition and the right side of a varying `||`. dest may be source.
class SlcInvertBoolFlagICode : public SlcICodeOf<SlcInvertBoolFlagICode, SlcICode> {
public:
    /// `outer` may be null.
    SlcInvertBoolFlagICode(SlcOperand dest, SlcOperand source, SlcOperand outer)
        : m_dest(std::move(dest)),
          m_source(std::move(source)),
          m_outer(std::move(outer))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_source;
    SlcOperand m_outer;
};

/// dest = left or right, over the whole grid. Used outside parallel brackets, to join the two sides
/// of a varying `||`. dest may be left.
class SlcOrBoolFlagICode : public SlcICodeOf<SlcOrBoolFlagICode, SlcICode> {
public:
    SlcOrBoolFlagICode(SlcOperand dest, SlcOperand left, SlcOperand right)
        : m_dest(std::move(dest)),
          m_left(std::move(left)),
          m_right(std::move(right))
    {
    }

    SlcOperand m_dest;
    SlcOperand m_left;
    SlcOperand m_right;
};
