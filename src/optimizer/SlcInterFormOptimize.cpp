// The optimizer's part of the compiled shader.

#include "icode/SlcInterForm.h"
#include "optimizer/SlcICodeOptimizer.h"

void SlcInterForm::Optimize()
{
    for (const auto& optimizer : SlcGetICodeOptimizerSequence(m_options))
        optimizer->Optimize(m_mainList);
}
