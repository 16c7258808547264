#pragma once

#include "optimizer/SlcDataflowAnalysis.h"

/// Removes computations whose result nobody reads.
///
/// One walk over each block from its end to its front, so that what fed only a removed
/// instruction of the same block goes with it; chains over several blocks take a fresh analysis
/// for each. Calls, texture and light instructions and control flow are never dead.
class SlcDeadCodeElimination {
public:
    /// Rewrites `list`, whose blocks are those of `graph`; true if something was removed. The
    /// graph and the analysis are stale then.
    [[nodiscard]] bool EliminateCode(SlcListICode& list, const SlcControlFlowGraph& graph,
                                     SlcDataflowAnalysis& analysis);
};
