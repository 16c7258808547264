// Dead code elimination, from the end of the code to its front.
//
//     x = 1; y = x; Ci = 2          y is read nowhere, and without it x is not either:   Ci = 2
//
// A computation goes if its result is not alive behind it, or if only computations that go need it
// (SlcNeededVariables, which sees cycles around loops). What is removed reads nothing any more, so
// the sets are corrected on the way: a chain inside a block dies in one walk, and RefreshFront
// hands the news to the blocks in front.
//
// Only what does nothing but compute is a candidate (the trait Computes). A variable without a
// number is seen from outside; a write of an element leaves the rest of its array alive.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...), and
// SlcDataflowAnalysisTest.cpp on random code.

#include "optimizer/SlcDeadCodeElimination.h"

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

/// Whether anyone reads what is written to the operand can be told: it is a followed variable and
/// written as a whole. A write through an element's reference reaches the array.
bool IsWholeVariable(const SlcOperand& operand)
{
    const SlcTypeNode* type = operand->GetType();
    return SlcVariableNumbers::Of(operand) >= 0 && !type->IsArrayType() && !type->IsArrayRefType();
}

[[nodiscard]] SlcNeededVariables NeededVariables(const SlcListICode& list, SlcDefUse& defUse,
                                                 int variables)
{
    SlcNeededVariables needed(variables);
    ComputedResult computed;
    for (const auto& code : list.m_icodes) {
        const SlcOperand result = computed.Of(code);
        defUse.Compute(code);
        if (result && IsWholeVariable(result))
            needed.AddComputation(SlcVariableNumbers::Of(result), defUse.Uses());
        else
            needed.AddReads(defUse.Uses());
    }
    needed.Solve();
    return needed;
}

}  // namespace

bool SlcDeadCodeElimination::EliminateCode(SlcListICode& list, const SlcControlFlowGraph& graph,
                                           SlcDataflowAnalysis& analysis)
{
    const SlcNeededVariables needed =
        NeededVariables(list, analysis.DefUse(), analysis.Variables().Count());
    ComputedResult computed;
    SlcLiveTest live(analysis);
    const auto nobodyReads = [&](const SlcOperand& result) {
        if (!IsWholeVariable(result))
            return false;
        const int number = SlcVariableNumbers::Of(result);
        return !needed.IsNeeded(number) || !live.IsLive(number);
    };

    std::deque<SlcPtr<SlcICode>> kept;
    const auto& blocks = graph.Blocks();
    for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
        live.StartAtEndOf(block->GetBlockId());
        const auto& codes = block->GetListICode();
        const std::size_t keptBefore = kept.size();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            const SlcOperand result = computed.Of(*code);
            if (result && nobodyReads(result))
                continue;
            // What is assigned to itself is alive in front as it is behind.
            live.StepOver(*code);
            if (result && computed.AssignsItself())
                continue;
            kept.push_front(*code);
        }
        if (kept.size() - keptBefore != codes.size())
            for (const int variable : analysis.ReadFirst(block->GetBlockId()))
                if (!live.IsReadFirst(variable))
                    analysis.ForgetRead(block->GetBlockId(), variable);
        analysis.RefreshFront(block->GetBlockId());
    }
    const bool changed = kept.size() != list.m_icodes.size();
    if (changed)
        list.m_icodes.swap(kept);
    return changed;
}
