// Dead code elimination, from the end of the code to its front.
//
//     x = 1; y = x; Ci = 2          y is read nowhere, and without it x is not either:   Ci = 2
//
// A computation goes if its result is not alive after it, or if only computations that go need it
// (SlcNeededVariables, which sees cycles around loops). Removed computations no longer count as
// uses, so the sets are corrected on the way: a chain inside a block dies in one walk, and
// RefreshFront hands the news to the blocks in front. Only around a loop the sets stay too large: a
// variable that lives from one round of it to the next may have lost its last read, which the next
// run sees.
//
// Only what does nothing but compute is a candidate (the trait Computes). A variable without a
// number is seen from outside; a write of an element leaves the rest of its array alive.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...), and
// SlcDataflowAnalysisTest.cpp on random code.

#include "optimizer/SlcDeadCodeElimination.h"

#include <utility>
#include <vector>

#include "icode/SlcICodes.h"
#include "optimizer/SlcNeededVariables.h"

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

/// Takes the instructions at those places, in falling order, out of the list.
void Remove(SlcListICode& list, const std::vector<std::size_t>& places)
{
    std::deque<SlcPtr<SlcICode>> kept;
    auto next = places.rbegin();
    for (std::size_t i = 0; i < list.m_icodes.size(); ++i) {
        if (next != places.rend() && *next == i)
            ++next;
        else
            kept.push_back(std::move(list.m_icodes[i]));
    }
    list.m_icodes.swap(kept);
}

}  // namespace

bool SlcDeadCodeElimination::EliminateCode(SlcListICode& list, const SlcControlFlowGraph& graph,
                                           SlcDataflowAnalysis& analysis)
{
    const SlcNeededVariables needed = NeededVariables(graph, analysis);
    SlcLiveTest live(analysis);
    const auto nobodyReads = [&](int variable) {
        return !needed.IsNeeded(variable) || !live.IsLive(variable);
    };

    m_isComplete = true;
    std::vector<std::size_t> removed;
    std::size_t place = list.m_icodes.size();
    const auto& blocks = graph.Blocks();
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        live.StartAtEndOf(block->GetBlockId());
        const std::size_t removedBefore = removed.size();
        const auto codes = block->GetListICode();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            --place;
            const SlcDefUse::Facts facts = analysis.FactsOf(**code);
            const bool isDead = facts.computes >= 0 && nobodyReads(facts.computes);
            // A variable that is assigned to itself is alive before if it is alive after.
            if (!isDead)
                live.StepOver(facts.uses, facts.defs);
            if (!isDead && !facts.assignsItself)
                continue;
            removed.push_back(place);
            for (const int read : facts.uses)
                m_isComplete = m_isComplete && !analysis.GoesAroundLoop(read);
        }
        if (removed.size() != removedBefore)
            for (const int variable : analysis.ReadFirst(block->GetBlockId()))
                if (!live.IsReadFirst(variable))
                    analysis.ForgetRead(block->GetBlockId(), variable);
        analysis.RefreshFront(block->GetBlockId());
    }
    if (!removed.empty())
        Remove(list, removed);
    return !removed.empty();
}
