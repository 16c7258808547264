#pragma once

#include <deque>

#include "lowering/SlcLoweringContext.h"

class SlcCastExprNode;

/// Lowers a cast whose operand has been evaluated: a constructor, an assignment or a transform from
/// the named space. Each operation returns the value, in the target of the enclosing assignment if
/// possible.
///
/// No transform is emitted without a named space, or with the space in which values of the type are
/// stored (`current`, `rgb`).
class SlcCastLowering {
public:
    /// The context must outlive this object.
    explicit SlcCastLowering(SlcLoweringContext& context) : m_context(context) {}

    /// Lowers the cast of a triple of floats, such as `color "hsv" (x, y, z)`. Fatal if the cast is
    /// not to a triple.
    [[nodiscard]] SlcOperand Triple(SlcCastExprNode* node, const SlcOperand& x, const SlcOperand& y,
                                    const SlcOperand& z);
    /// Lowers the cast of sixteen floats to a matrix, row by row.
    [[nodiscard]] SlcOperand Matrix(SlcCastExprNode* node, const std::deque<SlcOperand>& values);
    /// Lowers the cast of any other operand, such as a float to a triple or to the diagonal of a
    /// matrix, or a triple to another kind of triple. Returns the operand itself if the type is the
    /// same and no transform is needed.
    [[nodiscard]] SlcOperand Value(SlcCastExprNode* node, const SlcOperand& operand);

private:
    [[nodiscard]] SlcOperand GenCastToColor(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToPoint(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToMatrix(SlcCastExprNode* node, const SlcOperand& value);
    /// Emits the concatenation of `source`, which must be a matrix, with the cast's space.
    [[nodiscard]] SlcOperand GenConcatSpace(SlcCastExprNode* node, const SlcOperand& source);
    /// Transforms `source`, the output of `constructor`, from the cast's space into `result`.
    [[nodiscard]] SlcOperand GenFromSpace(SlcCastExprNode* node, const SlcOperand& result,
                                          const SlcOperand& source, SlcTypeNode* type,
                                          const SlcPtr<SlcICode>& constructor);

    SlcLoweringContext& m_context;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
};
