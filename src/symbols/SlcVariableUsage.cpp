// A variable has one state for writes and one for reads before any write: Never, Maybe or Always.
// Along a path, a state changes only in this order; where paths meet, different states become
// Maybe.
//
//     set(maybe), set        Always          the second one always happens
//     set | nothing          Maybe           an `if` without `else`
//
// Tested by tests/semantics/SlcCheckUsageTest.cpp.

#include "symbols/SlcVariableUsage.h"

namespace {

/// Returns the state after another event or, with `maybe`, after an event that may not happen.
SlcUsageState Again(SlcUsageState state, bool maybe)
{
    if (state == SlcUsageState::Always || !maybe)
        return SlcUsageState::Always;
    return SlcUsageState::Maybe;
}

SlcUsageState OnEither(SlcUsageState first, SlcUsageState second)
{
    return first == second ? first : SlcUsageState::Maybe;
}

}  // namespace

void SlcVariableUsage::SetModifiedInScope(bool maybe)
{
    m_modified = Again(m_modified, maybe);
}

void SlcVariableUsage::SetAccessedInScope(bool maybe)
{
    if (m_modified != SlcUsageState::Always)
        m_read = Again(m_read, maybe || m_modified == SlcUsageState::Maybe);
}

SlcVariableUsage SlcVariableUsage::Meet(const SlcVariableUsage& other) const
{
    SlcVariableUsage met;
    met.m_modified = OnEither(m_modified, other.m_modified);
    met.m_read = OnEither(m_read, other.m_read);
    return met;
}
