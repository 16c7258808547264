#pragma once

#include <utility>

#include "frontend/SlcAnnotation.h"
#include "icode/SlcLexType.h"

/// The flag that the parent of a relation prefers for its value, and whether to negate the value.
/// The lowering attaches it to the relation before each walk of the relation.
class SlcBoolExprResult : public SlcAnnotation {
public:
    SlcBoolExprResult() = default;
    /// `result` may be null. The lowering may use another flag, for example because a uniform flag
    /// cannot hold a varying value.
    SlcBoolExprResult(SlcOperand result, bool inverted)
        : m_result(std::move(result)),
          m_inverted(inverted)
    {
    }
    /// The preferred flag for the value; null if any flag is accepted.
    [[nodiscard]] const SlcOperand& GetResult() const { return m_result; }
    /// True if the parent needs the negated value.
    [[nodiscard]] bool IsInverted() const { return m_inverted; }

private:
    SlcOperand m_result;
    bool m_inverted = false;
};
