#pragma once

#include <deque>

#include "icode/SlcICode.h"

/// One code block: the body of a shader, or the initializer of one of its parameters. Passes read
/// and change its fields directly; to add or remove instructions they build a new deque and swap it
/// in.
class SlcListICode : public SlcCollectable {
public:
    /// Adds a local or temporary of this block.
    void AddLocalVar(const SlcOperand& variable);
    /// Adds a predefined variable, which the block uses but does not declare.
    void AddHiddenVar(const SlcOperand& variable);
    void AddICode(SlcPtr<SlcICode> code) { m_icodes.push_back(std::move(code)); }

    std::deque<SlcOperand> m_localVars;      // every local and temporary ever made
    std::deque<SlcOperand> m_usedLocalVars;  // those that the back ends declare
    std::deque<SlcOperand> m_allVars;        // locals, temporaries and predefined variables: those
                                             // that data flow follows
    std::deque<SlcPtr<SlcICode>> m_icodes;   // in order
};
