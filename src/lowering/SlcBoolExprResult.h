#pragma once

#include "frontend/SlcAnnotation.h"
#include "icode/SlcLexType.h"

/// The flag that the caller prefers for a relation's value, and whether to invert the value.
/// Attached to the relation before each walk.
class SlcBoolExprResult : public SlcAnnotation {
public:
    SlcBoolExprResult() = default;
    /// `result` may be null. The relation may return another flag, since a uniform flag cannot hold
    /// a varying value.
    SlcBoolExprResult(SlcOperand result, bool inverted)
        : m_result(std::move(result)),
          m_inverted(inverted)
    {
    }
    /// The preferred flag for the value; null if any flag is accepted.
    [[nodiscard]] const SlcOperand& GetResult() const { return m_result; }
    /// True if the caller needs the negated value.
    [[nodiscard]] bool IsInverted() const { return m_inverted; }

private:
    SlcOperand m_result;
    bool m_inverted = false;
};
