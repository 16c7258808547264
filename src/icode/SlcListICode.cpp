// Each of the three lists of variables is a subset of the one before: all variables that the code
// names; its locals; the locals that are still used, which the optimizer reduces.

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
