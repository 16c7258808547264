#pragma once

#include <cstddef>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcNeededVariables.h"

/// Removes computations whose result is never read.
///
/// One walk against the code order, which keeps the sets true to what is left: what fed only
/// removed instructions goes with them. What only feeds itself around a loop goes too, see
/// `SlcNeededVariables`.
/// Calls, texture and light instructions and control flow are never dead.
class SlcDeadCodeElimination {
public:
    /// Rewrites `list`, whose blocks are those of `graph`; true if something was removed. The
    /// graph and the analysis are those of the code that is left, or else stale (`KeepsGraph`).
    [[nodiscard]] bool EliminateCode(SlcListICode& list, SlcControlFlowGraph& graph,
                                     SlcDataflowAnalysis& analysis);
    /// After a run: another one would find nothing. It might if the last has removed what read a
    /// variable that goes around a loop.
    [[nodiscard]] bool IsComplete() const { return m_isComplete; }
    /// The blocks are those before, although some have lost instructions.
    [[nodiscard]] bool KeepsGraph() const { return m_keepsGraph; }
    /// No constant is known anywhere that was not before.
    [[nodiscard]] bool KeepsConstants() const { return m_keepsGraph && m_keepsConstants; }
    /// No labels, jumps or brackets have become neighbours.
    [[nodiscard]] bool KeepsMarksApart() const { return m_keepsMarksApart; }

private:
    /// Finds what is dead, from the end to the front.
    void FindDeadCode(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    /// Notes that an instruction goes.
    void Remove(const SlcICode& code, const SlcDefUse::Facts& facts,
                const SlcDataflowAnalysis& analysis);
    /// Brings graph and analysis up to date, if that is possible.
    void Update(SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    SlcNeededVariables m_needed{0};
    std::vector<std::size_t> m_removed;  // places, in falling order at first
    std::vector<int> m_blocks;           // that have lost instructions
    bool m_isComplete = true;
    bool m_keepsGraph = true;
    bool m_keepsConstants = true;
    bool m_keepsMarksApart = true;
};
