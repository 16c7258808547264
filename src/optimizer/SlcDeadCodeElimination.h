#pragma once

#include <cstddef>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcNeededVariables.h"

/// Removes computations whose result is never read, and assignments of a variable to itself.
///
/// One walk in reverse code order, which updates liveness to the remaining code, so that
/// computations whose results only removed instructions read are removed too. So are computations
/// that only feed themselves or each other around a loop, see `SlcNeededVariables`. Calls, texture
/// and light instructions, writes of arrays and their elements, and control flow are never dead.
/// Each run needs a new object.
class SlcDeadCodeElimination {
public:
    /// Rewrites `list`, whose blocks are those of `graph`; true if an instruction was removed.
    /// Graph and analysis are updated to the remaining code, or are stale afterwards
    /// (`KeepsGraph`).
    [[nodiscard]] bool EliminateCode(SlcListICode& list, SlcControlFlowGraph& graph,
                                     SlcDataflowAnalysis& analysis);
    /// True if another run would find nothing. False if another run might find something, since
    /// this one has removed reads of a variable that is live around a loop.
    [[nodiscard]] bool IsComplete() const { return m_isComplete; }
    /// True if the blocks and edges are the same as before, although blocks may be shorter.
    [[nodiscard]] bool KeepsGraph() const { return m_keepsGraph; }
    /// True only if the removal cannot have made a constant known.
    [[nodiscard]] bool KeepsConstants() const { return m_keepsGraph && m_keepsConstants; }
    /// True if no two marks have become adjacent. Marks are brackets, labels and instructions that
    /// refer to a label, such as jumps (`SlcRemoveEmptyBlocks::IsMark`).
    [[nodiscard]] bool KeepsMarksApart() const { return m_keepsMarksApart; }

private:
    /// Finds dead code, from the end to the front.
    void FindDeadCode(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    /// Records the consequences of removing an instruction.
    void Remove(const SlcICode& code, const SlcDefUse::Facts& facts,
                const SlcDataflowAnalysis& analysis);
    /// Updates graph and analysis, if no block has become empty.
    void Update(SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    SlcNeededVariables m_needed{0};
    std::vector<std::size_t> m_removed;  // positions, at first in descending order
    std::vector<int> m_blocks;           // blocks that have lost instructions
    bool m_isComplete = true;
    bool m_keepsGraph = true;
    bool m_keepsConstants = true;
    bool m_keepsMarksApart = true;
};
