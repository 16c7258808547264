// Three lists of variables with one difference each: all that the code names; of those the ones
// that are its own; of those the ones still used, which the optimizer makes fewer.

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
