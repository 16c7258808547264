#pragma once

#include <deque>
#include <optional>

#include "icode/SlcBlockICode.h"
#include "optimizer/SlcICodeOptimizer.h"
#include "optimizer/SlcUniformAccess.h"

/// Joins adjacent parallel runs, so that one loop over the shading points does the work of several.
/// Linear.
///
/// A run with a comparison or with an order-sensitive call can be joined with the run before it,
/// but not with the one after it. Runs are not joined if one writes a uniform operand that the
/// other accesses.
class SlcRegroupParallelBlocks : public SlcICodeOptimizer {
public:
    /// Rewrites `list`, and drops its comments; needs no graph.
    void Optimize(SlcPtr<SlcListICode>& list) override;

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcBeginParallelICode> code) override;
    void Case(SlcPtr<SlcEndParallelICode> code) override;
    void Case(SlcPtr<SlcCommentICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcBoolExprICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    /// Emits the end of the run that `m_currentBegin` opened.
    void CloseRun();

    std::deque<SlcPtr<SlcICode>> m_output;
    std::optional<SlcUniformAccessOfRuns> m_uniforms;
    std::size_t m_runs = 0;        // number of runs begun so far
    std::size_t m_currentRun = 0;  // number of the run that `m_currentBegin` opened
    SlcPtr<SlcBeginParallelICode> m_currentBegin;
    bool m_endIsHeld = false;  // a run has ended but may still be continued
    bool m_noJoin = false;     // the run contains an instruction that prevents joining the next run
};
