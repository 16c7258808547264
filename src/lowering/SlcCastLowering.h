#pragma once

#include <deque>

#include "lowering/SlcLoweringContext.h"

class SlcCastExprNode;

/// Lowers a cast whose operand has been evaluated: a constructor, an assignment or a transform from
/// the named space. Each operation gives the value, in the target of the assignment around the cast
/// where one fits.
///
/// Without a space, or with the one that values of the type stand in anyway (`current`, `rgb`), no
/// transform is made.
class SlcCastLowering {
public:
    /// The context outlives it.
    explicit SlcCastLowering(SlcLoweringContext& context) : m_context(context) {}

    /// Of a triple such as `color "hsv" (x, y, z)`: three floats. Fatal for a cast to another type
    /// than a triple.
    [[nodiscard]] SlcOperand Triple(SlcCastExprNode* node, const SlcOperand& x, const SlcOperand& y,
                                    const SlcOperand& z);
    /// Of the sixteen floats of a matrix, row by row.
    [[nodiscard]] SlcOperand Matrix(SlcCastExprNode* node, const std::deque<SlcOperand>& values);
    /// Of any other operand: a float spread over a triple or the diagonal of a matrix, a triple as
    /// one of another kind. One of the same type without a transform is given as it is.
    [[nodiscard]] SlcOperand Value(SlcCastExprNode* node, const SlcOperand& operand);

private:
    [[nodiscard]] SlcOperand GenCastToColor(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToPoint(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToMatrix(SlcCastExprNode* node, const SlcOperand& value);
    /// `source` is a matrix by now.
    [[nodiscard]] SlcOperand GenConcatSpace(SlcCastExprNode* node, const SlcOperand& source);
    /// result = what `constructor` makes in `source`, meant in the cast's space.
    [[nodiscard]] SlcOperand GenFromSpace(SlcCastExprNode* node, const SlcOperand& result,
                                          const SlcOperand& source, SlcTypeNode* type,
                                          const SlcPtr<SlcICode>& constructor);

    SlcLoweringContext& m_context;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
};
