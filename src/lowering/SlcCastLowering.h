#pragma once

#include <deque>

#include "lowering/SlcLoweringContext.h"

class SlcCastExprNode;

/// Lowers a cast whose operand has been evaluated, to a constructor or an assignment and, if the
/// cast names a space, a transform from this space. Each operation returns the value: the target of
/// the enclosing assignment, a temporary, or the operand itself.
///
/// No transform is emitted without a named space, for an empty name, or for the space in which
/// values of the type are stored: `rgb` for colors, otherwise `current`.
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
    /// matrix, or a triple to another kind of triple. If the operand already has the type of the
    /// cast, or both are of the point family, and no transform is needed, returns the operand.
    /// Fatal if the cast is to another type than a color, the point family or a matrix.
    [[nodiscard]] SlcOperand Value(SlcCastExprNode* node, const SlcOperand& operand);

private:
    [[nodiscard]] SlcOperand GenCastToColor(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToPoint(SlcCastExprNode* node, const SlcOperand& value);
    [[nodiscard]] SlcOperand GenCastToMatrix(SlcCastExprNode* node, const SlcOperand& value);
    /// Emits the concatenation of `source`, which must be a matrix, with the cast's space.
    [[nodiscard]] SlcOperand GenConcatSpace(SlcCastExprNode* node, const SlcOperand& source);
    /// Emits `constructor`, which writes `source`, and the transform of `source` from the cast's
    /// space into `result`, which it returns.
    [[nodiscard]] SlcOperand GenFromSpace(SlcCastExprNode* node, const SlcOperand& result,
                                          const SlcOperand& source, SlcTypeNode* type,
                                          const SlcPtr<SlcICode>& constructor);

    SlcLoweringContext& m_context;
    SlcListBuilder& m_list = m_context.m_list;
    SlcConditions& m_conditions = m_context.m_conditions;
};
