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
