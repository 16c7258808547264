// The member function of the compiled shader that optimizes it.

#include "icode/SlcICodeValidator.h"
#include "icode/SlcInterForm.h"
#include "optimizer/SlcICodeOptimizer.h"

void SlcInterForm::Optimize()
{
    if (m_options.m_validateICode)
        SlcICodeValidator::Require(*m_mainList, SlcICodeValidator::Stage::Lowered);
    for (const auto& optimizer : SlcGetICodeOptimizerSequence(m_options)) {
        optimizer->Optimize(m_mainList);
        // SlcConvertTmpVarDetail sets details that break the rules of the validator.
        if (m_options.m_validateICode && !m_options.m_convertTmpVarDetail)
            SlcICodeValidator::Require(*m_mainList, SlcICodeValidator::Stage::Optimized);
    }
}
