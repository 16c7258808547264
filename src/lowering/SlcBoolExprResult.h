#pragma once

#include "frontend/SlcAnnotation.h"
#include "icode/SlcLexType.h"

/// What the one who asks for a relation's value wants; set on the relation before it is walked,
/// afresh each time.
class SlcBoolExprResult : public SlcAnnotation {
public:
    SlcBoolExprResult() = default;
    /// `result` may be null. The relation may still give another flag: what varies has no place in
    /// a uniform one.
    SlcBoolExprResult(SlcOperand result, bool inverted)
        : m_result(std::move(result)),
          m_inverted(inverted)
    {
    }
    /// The flag that the value is to go to; null if any will do.
    [[nodiscard]] const SlcOperand& GetResult() const { return m_result; }
    /// The opposite of the relation is wanted.
    [[nodiscard]] bool IsInverted() const { return m_inverted; }

private:
    SlcOperand m_result;
    bool m_inverted = false;
};
