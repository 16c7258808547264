// Each of the three lists of variables is a subset of the one before: `m_allVars`, which also has
// the predefined variables; `m_localVars`; and `m_usedLocalVars`, the locals that are still used,
// which the optimizer reduces.

#include "icode/SlcListICode.h"

void SlcListICode::AddLocalVar(const SlcOperand& variable)
{
    m_localVars.push_back(variable);
    m_usedLocalVars.push_back(variable);
    m_allVars.push_back(variable);
}

void SlcListICode::AddHiddenVar(const SlcOperand& variable)
{
    m_allVars.push_back(variable);
}
