// Dead code elimination, from the end of the code to its front.
//
//     x = 1; y = x; Ci = 2          y is never read, and without it x is not either:   Ci = 2
//
// A computation is removed if its result is not live after it, or if only removed computations need
// it (SlcNeededVariables, which handles cycles around loops). The operands of removed computations
// no longer count as used, so the sets are corrected during the walk: a chain inside a block is
// removed in one walk, and RefreshLiveIn propagates the smaller sets to the preceding blocks. But
// around a loop the sets may stay too large: a variable that is live from one iteration to the next
// may have lost its last read. The sets computed after the walk show whether another run might find
// anything.
//
// Only instructions that have no effect except the value that they write are candidates (the trait
// Computes), and only if they write a variable that has a number and is no array or array
// reference: one without a number is visible outside the code, and a write of an element leaves the
// rest of its array live. But x = x is always removed.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...), and
// SlcDataflowAnalysisTest.cpp on random code.

#include "optimizer/SlcDeadCodeElimination.h"

#include <algorithm>
#include <deque>
#include <span>

#include "optimizer/SlcCopyPropagation.h"
#include "optimizer/SlcRemoveAt.h"
#include "optimizer/SlcRemoveEmptyBlocks.h"

namespace {

[[nodiscard]] SlcNeededVariables NeededVariables(const SlcControlFlowGraph& graph,
                                                 const SlcDataflowAnalysis& analysis)
{
    SlcNeededVariables needed(analysis.Variables().Count());
    for (const auto& code : graph.Codes()) {
        const SlcDefUse::Facts facts = analysis.FactsOf(*code);
        if (facts.computes >= 0)
            needed.AddComputation(facts.computes, facts.uses);
        else
            needed.AddReads(facts.uses);
    }
    needed.Solve();
    return needed;
}

/// True if the removal makes two marks adjacent. Positions are in ascending order.
[[nodiscard]] bool JoinsMarks(const std::deque<SlcPtr<SlcICode>>& codes,
                              std::span<const std::size_t> removed)
{
    for (std::size_t i = 0; i < removed.size(); ++i) {
        const std::size_t before = removed[i];
        while (i + 1 < removed.size() && removed[i + 1] == removed[i] + 1)
            ++i;
        const std::size_t after = removed[i] + 1;
        if (before > 0 && after < codes.size() &&
            SlcRemoveEmptyBlocks::IsMark(*codes[before - 1]) &&
            SlcRemoveEmptyBlocks::IsMark(*codes[after]))
            return true;
    }
    return false;
}

}  // namespace

bool SlcDeadCodeElimination::EliminateCode(SlcListICode& list, SlcControlFlowGraph& graph,
                                           SlcDataflowAnalysis& analysis)
{
    m_needed = NeededVariables(graph, analysis);
    FindDeadCode(graph, analysis);
    if (m_removed.empty())
        return false;
    std::reverse(m_removed.begin(), m_removed.end());
    m_keepsMarksApart = !JoinsMarks(list.m_icodes, m_removed);
    SlcRemoveAt(m_removed, list.m_icodes);
    Update(graph, analysis);
    return true;
}

void SlcDeadCodeElimination::FindDeadCode(const SlcControlFlowGraph& graph,
                                          SlcDataflowAnalysis& analysis)
{
    SlcLiveTest live(analysis);
    const auto isUnused = [&](int variable) {
        return !m_needed.IsNeeded(variable) || !live.IsLive(variable);
    };
    std::size_t place = graph.Codes().size();
    const auto& blocks = graph.Blocks();
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        live.StartAtEndOf(block->GetBlockId());
        const std::size_t removedBefore = m_removed.size();
        const auto codes = block->GetListICode();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            --place;
            const SlcDefUse::Facts facts = analysis.FactsOf(**code);
            const bool isDead = facts.computes >= 0 && isUnused(facts.computes);
            // Step over x = x too, although it is removed: x is live before it if x is live after
            // it.
            if (!isDead)
                live.StepOver(facts.uses, facts.defs);
            if (!isDead && !facts.assignsItself)
                continue;
            m_removed.push_back(place);
            Remove(**code, facts, analysis);
        }
        if (m_removed.size() != removedBefore) {
            m_blocks.push_back(block->GetBlockId());
            for (const int variable : analysis.ReadFirst(block->GetBlockId()))
                if (!live.IsReadFirst(variable))
                    analysis.ForgetRead(block->GetBlockId(), variable);
        }
        analysis.RefreshLiveIn(block->GetBlockId());
    }
}

void SlcDeadCodeElimination::Remove(const SlcICode& code, const SlcDefUse::Facts& facts,
                                    const SlcDataflowAnalysis& analysis)
{
    for (const int read : facts.uses)
        m_isComplete = m_isComplete && !analysis.IsLiveAroundLoop(read);
    m_keepsConstants =
        m_keepsConstants && !facts.assignsItself && !SlcCopyPropagation::ForgetsReads(code);
}

// During the walk, sets around a loop may have been too large. If they and the needed variables are
// the same afterwards, another walk would find nothing.
void SlcDeadCodeElimination::Update(SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis)
{
    m_keepsGraph = graph.Remove(m_removed);
    if (!m_keepsGraph)
        return;
    const bool hasChanged = analysis.Update(m_blocks);
    if (!m_isComplete && !hasChanged)
        m_isComplete = NeededVariables(graph, analysis).FoundTheSame(m_needed);
}
