// All passes, in the order in which they run; those of SlcOptimizeBasicBlocks are indented:
//
//     step                          flag                     from
//     SlcRegroupParallelBlocks      m_regroupParallelBlocks  -O1
//     SlcRegroupParallelIfs         m_regroupParallelBlocks  -O1   after runs are merged, which
//                                                                  makes guards adjacent
//     SlcOptimizeBasicBlocks        m_optimizeBasicBlocks    -O2   rounds; in each, the first pass
//                                                                  that changes something ends it
//         SlcDeadCodeElimination    m_deadCodeElimination
//         SlcRemoveEmptyBlocks      m_deadCodeElimination
//         SlcCopyPropagation        m_copyPropagation              in one walk with the next
//         SlcConvertConstOp         m_convertConstOps
//         SlcCodeMotion             m_codeMotion             -O3
//         SlcReduceNumberTmps       m_reduceNumberTmps             once, when nothing changes
//         SlcConvertTmpVarDetail    m_convertTmpVarDetail          for C++: before the step above,
//                                                                  and at the end
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcICodeOptimizer, ...).

#include "optimizer/SlcICodeOptimizer.h"

#include "icode/SlcPrintICode.h"
#include "optimizer/SlcOptimizeBasicBlocks.h"
#include "optimizer/SlcRegroupParallelBlocks.h"
#include "optimizer/SlcRegroupParallelIfs.h"

namespace {

/// Dumps the list to a file, as the last step of the sequence.
class PrintStep : public SlcICodeOptimizer {
public:
    void Optimize(SlcPtr<SlcListICode>& list) override { SlcPrintICode().Optimize(list); }

private:
    void Default(SlcPtr<SlcICode>) override {}
};

}  // namespace

std::vector<SlcPtr<SlcICodeOptimizer>> SlcGetICodeOptimizerSequence(SlcOptionsControl& options)
{
    std::vector<SlcPtr<SlcICodeOptimizer>> sequence;
    if (options.m_regroupParallelBlocks) {
        sequence.push_back(MakeShared<SlcRegroupParallelBlocks>());
        sequence.push_back(MakeShared<SlcRegroupParallelIfs>());
    }
    if (options.m_optimizeBasicBlocks)
        sequence.push_back(MakeShared<SlcOptimizeBasicBlocks>(options));
    if (options.m_printICode)
        sequence.push_back(MakeShared<PrintStep>());
    return sequence;
}
