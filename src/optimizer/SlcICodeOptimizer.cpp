// The order of the steps: guards are joined behind runs, which brings them together, and blocks are
// worked on when both are done. docs/architecture.md shows all passes with their flags.

#include "optimizer/SlcICodeOptimizer.h"

#include "icode/SlcPrintICode.h"
#include "optimizer/SlcOptimizeBasicBlocks.h"
#include "optimizer/SlcRegroupParallelBlocks.h"
#include "optimizer/SlcRegroupParallelIfs.h"

namespace {

/// The dump of the list as a step of the sequence.
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
