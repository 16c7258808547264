// The optimizer's part of the compiled shader.

#include "icode/SlcICodeValidator.h"
#include "icode/SlcInterForm.h"
#include "optimizer/SlcICodeOptimizer.h"

void SlcInterForm::Optimize()
{
    if (m_options.m_validateICode)
        SlcICodeValidator::Require(*m_mainList, SlcICodeValidator::Stage::Lowered);
    for (const auto& optimizer : SlcGetICodeOptimizerSequence(m_options)) {
        optimizer->Optimize(m_mainList);
        // Where details have come to mean the storage of a temporary, the rules do not apply.
        if (m_options.m_validateICode && !m_options.m_convertTmpVarDetail)
            SlcICodeValidator::Require(*m_mainList, SlcICodeValidator::Stage::Optimized);
    }
}
