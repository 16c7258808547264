#pragma once

#include "optimizer/SlcDataflowAnalysis.h"

/// Removes computations whose result is never read.
///
/// One walk against the code order, which keeps the sets true to what is left: what fed only
/// removed instructions goes with them. What only feeds itself around a loop goes too, see
/// `SlcNeededVariables`.
/// Calls, texture and light instructions and control flow are never dead.
class SlcDeadCodeElimination {
public:
    /// Rewrites `list`, whose blocks are those of `graph`; true if something was removed. The
    /// graph and the analysis are stale then.
    [[nodiscard]] bool EliminateCode(SlcListICode& list, const SlcControlFlowGraph& graph,
                                     SlcDataflowAnalysis& analysis);
    /// After a run: another one would find nothing. It might if the last has removed what read a
    /// variable that goes around a loop.
    [[nodiscard]] bool IsComplete() const { return m_isComplete; }

private:
    bool m_isComplete = true;
};
