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

/// The result of an instruction that does nothing but compute it.
class ComputedResult : public SlcOperandWalker {
public:
    /// Null for an instruction that does more, or nothing.
    [[nodiscard]] SlcOperand Of(const SlcPtr<SlcICode>& code)
    {
        m_result = nullptr;
        m_assignsItself = false;
        if (code->Is(SlcICodeTraits::Computes))
            Visit(code);
        return m_result;
    }
    [[nodiscard]] bool AssignsItself() const { return m_assignsItself; }

private:
    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override
    {
        m_result = code->m_dest;
        m_assignsItself = code->m_dest == code->m_source;
    }
    void Read(SlcOperand&) override {}
    void Write(SlcOperand& operand) override { m_result = operand; }

    SlcOperand m_result;
    bool m_assignsItself = false;
};

/// True if uses of the written operand can be found: it is a followed variable and written as a
/// whole. A write through an element's reference reaches the array.
bool IsWholeVariable(const SlcOperand& operand)
{
    const SlcTypeNode* type = operand->GetType();
    return SlcVariableNumbers::Of(operand) >= 0 && !type->IsArrayType() && !type->IsArrayRefType();
}

/// The result of an instruction without other effects.
struct Computation {
    int variable = -1;  // that it writes as a whole; none for an instruction that does more
    bool assignsItself = false;
};

[[nodiscard]] std::vector<Computation> ComputationsOf(const SlcListICode& list)
{
    std::vector<Computation> computations;
    computations.reserve(list.m_icodes.size());
    ComputedResult computed;
    for (const auto& code : list.m_icodes) {
        const SlcOperand result = computed.Of(code);
        const bool isWhole = result && IsWholeVariable(result);
        computations.push_back(
            {isWhole ? SlcVariableNumbers::Of(result) : -1, computed.AssignsItself()});
    }
    return computations;
}

[[nodiscard]] SlcNeededVariables NeededVariables(const std::vector<Computation>& computations,
                                                 const SlcDataflowAnalysis& analysis)
{
    SlcNeededVariables needed(analysis.Variables().Count());
    for (std::size_t i = 0; i < computations.size(); ++i) {
        if (computations[i].variable >= 0)
            needed.AddComputation(computations[i].variable, analysis.UsesAt(i));
        else
            needed.AddReads(analysis.UsesAt(i));
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
    const std::vector<Computation> computations = ComputationsOf(list);
    const SlcNeededVariables needed = NeededVariables(computations, analysis);
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
        for (std::size_t left = block->GetListICode().size(); left > 0; --left) {
            const auto [variable, assignsItself] = computations[--place];
            const bool isDead = variable >= 0 && nobodyReads(variable);
            // A variable that is assigned to itself is alive before if it is alive after.
            if (!isDead)
                live.StepOver(analysis.UsesAt(place), analysis.DefsAt(place));
            if (!isDead && !assignsItself)
                continue;
            removed.push_back(place);
            for (const int read : analysis.UsesAt(place))
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
