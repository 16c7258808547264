// Rounds of passes until nothing changes. Each change leaves liveness stale, and the graph too
// unless it only put operands in the place of others, so a round builds what is stale and needed,
// does one change, and begins again:
//
//     round     1. dead code           2. empty blocks     3. constants and folding     4. loops
//               the first of them that changes the list ends the round
//     no change the temporaries are shared, once; rounds again, since that leaves x = x
//     no change the end
//
// A round leaves out the search for dead code while no instruction that reads something has gone or
// changed since the last complete one: labels, plain jumps and brackets keep no variable alive.
//
// Constants are put in and folded in one walk, instruction by instruction, so that a chain like
// `x = 2; y = x + 1; z = y` is done at once, where two passes would need a round for each link.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcICodeOptimizer, ...), and by all levels
// against each other in tests/random.

#include "optimizer/SlcOptimizeBasicBlocks.h"

#include <fstream>

#include "icode/SlcICodeValidator.h"
#include "optimizer/SlcCodeMotion.h"
#include "optimizer/SlcConvertConstOp.h"
#include "optimizer/SlcConvertTmpVarDetail.h"
#include "optimizer/SlcCopyPropagation.h"
#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDeadCodeElimination.h"
#include "optimizer/SlcReduceNumberTmps.h"
#include "optimizer/SlcRemoveEmptyBlocks.h"

namespace {

constexpr int k_maxRounds = 1000;  // a bound, not an error: the code is correct in each round

/// The successor that a block leaves for no more, now that folding has made `folded` of its last
/// instruction; -1 for none. `isDropping`: that instruction guards code that can never run.
int DroppedSuccessor(const SlcBasicBlock& block, const SlcPtr<SlcICode>& folded, bool isDropping)
{
    const auto& next = block.GetNextBlocks();
    if (next.size() < 2 || folded == block.GetListICode().back())
        return -1;
    // A jump that has become an unconditional one, or a guard whose code is dropped, goes on at its
    // label; one that was removed falls through.
    const int following = block.GetBlockId() + 1;
    const bool jumps = folded || isDropping;
    if (jumps)
        return following;
    return next.front() == following ? next.back() : next.front();
}

}  // namespace

SlcOptimizeBasicBlocks::SlcOptimizeBasicBlocks(SlcOptionsControl& options) : m_options(options) {}
SlcOptimizeBasicBlocks::~SlcOptimizeBasicBlocks() = default;

void SlcOptimizeBasicBlocks::Optimize(SlcPtr<SlcListICode>& list)
{
    if (!m_options.m_blockOptimizerEnabled)
        return;
    const bool repeats = m_options.m_deadCodeElimination || m_options.m_copyPropagation ||
                         m_options.m_convertConstOps || m_options.m_codeMotion;
    const int maxRounds = repeats ? k_maxRounds : 1;
    m_variables = std::make_unique<SlcVariableNumbers>(*list);
    m_defUse = std::make_unique<SlcDefUse>(*m_variables);
    m_graphIsCurrent = false;
    m_hasNoDeadCode = false;
    bool updated = false;
    bool changed = true;
    for (int round = 0; changed && round < maxRounds; ++round) {
        BuildGraph(*list);
        changed = EliminateCode(*list) || ChangeCode(*list);
        if (m_options.m_validateICode)
            SlcICodeValidator::Require(*list, SlcICodeValidator::Stage::Optimized);
        if (!changed && !updated) {
            UpdateVariables(*list);
            updated = true;
            changed = true;
        }
    }
    if (m_options.m_convertTmpVarDetail)
        SlcConvertTmpVarDetail(*list, *m_variables);
    if (m_options.m_printBlockICode) {
        BuildGraph(*list);
        DumpBlocks();
    }
}

void SlcOptimizeBasicBlocks::BuildGraph(SlcListICode& list)
{
    m_analysis.reset();
    if (!m_graphIsCurrent)
        m_graph = std::make_unique<SlcControlFlowGraph>(list);
    m_graphIsCurrent = true;
    if (m_options.m_printBlockICode) {
        std::ofstream out("usedefvars.txt");
        Liveness().Print(out);
    }
}

SlcDataflowAnalysis& SlcOptimizeBasicBlocks::Liveness()
{
    if (!m_analysis)
        m_analysis = std::make_unique<SlcDataflowAnalysis>(*m_graph, *m_variables, *m_defUse);
    return *m_analysis;
}

bool SlcOptimizeBasicBlocks::EliminateCode(SlcListICode& list)
{
    if (!m_options.m_deadCodeElimination)
        return false;
    bool changed = false;
    if (!m_hasNoDeadCode) {
        SlcDeadCodeElimination deadCode;
        changed = deadCode.EliminateCode(list, *m_graph, Liveness());
        m_hasNoDeadCode = deadCode.IsComplete();
    }
    if (!changed) {
        SlcRemoveEmptyBlocks emptyBlocks;
        changed = emptyBlocks.RemoveUnreachable(*m_graph, list);
        changed |= emptyBlocks.RemoveBlocks(list);
        m_hasNoDeadCode = m_hasNoDeadCode && !emptyBlocks.HasRemovedReads();
    }
    m_graphIsCurrent = m_graphIsCurrent && !changed;
    return changed;
}

bool SlcOptimizeBasicBlocks::ChangeCode(SlcListICode& list)
{
    const bool isFolded = PropagateAndFold(list);
    const bool isMoved = !isFolded && m_options.m_codeMotion &&
                         SlcCodeMotion(*m_graph, Liveness()).OptimizeLoops(list);
    m_graphIsCurrent = m_graphIsCurrent && !isMoved;
    m_hasNoDeadCode = m_hasNoDeadCode && !isFolded && !isMoved;
    return isFolded || isMoved;
}

bool SlcOptimizeBasicBlocks::PropagateAndFold(SlcListICode& list)
{
    SlcCopyPropagation propagation(*m_graph, *m_variables);
    SlcConvertConstOp folding;
    folding.Begin();
    std::deque<SlcPtr<SlcICode>> output;
    bool isCopying = false;  // from the first change on
    std::size_t place = 0;
    for (const auto& block : m_graph->Blocks()) {
        propagation.EnterBlock(block);
        SlcPtr<SlcICode> code;
        for (const auto& original : block.GetListICode()) {
            code = original;
            // Brackets of runs have no operands.
            const bool isBracket =
                original->Is(SlcICodeTraits::OpensRun | SlcICodeTraits::ClosesRun);
            if (m_options.m_copyPropagation && !isBracket)
                propagation.Propagate(code);
            if (m_options.m_convertConstOps && !isBracket) {
                code = folding.Fold(original);
                // The new constant is known to later instructions.
                if (code && !(code == original) && m_options.m_copyPropagation)
                    propagation.Propagate(code);
            }
            const bool isKept = code && !folding.IsDropping();
            if (!isCopying && !(isKept && code == original)) {
                output.assign(list.m_icodes.begin(),
                              list.m_icodes.begin() + static_cast<std::ptrdiff_t>(place));
                isCopying = true;
            }
            if (isCopying && isKept)
                output.push_back(code);
            ++place;
        }
        propagation.LeaveBlock(block);
        propagation.DropEdge(block, DroppedSuccessor(block, code, folding.IsDropping()));
    }
    if (isCopying) {
        list.m_icodes.swap(output);
        m_graphIsCurrent = false;
    }
    return propagation.HasChanged() || folding.HasChanged();
}

void SlcOptimizeBasicBlocks::UpdateVariables(SlcListICode& list)
{
    if (!m_options.m_reduceNumberTmps)
        return;
    // Only variables that will be stored alike may share storage. The passes to come still take all
    // of them for varying, since a uniform one could be carried out of its run.
    if (m_options.m_convertTmpVarDetail)
        SlcConvertTmpVarDetail(list, *m_variables);
    std::ofstream dump;
    if (m_options.m_printBlockICode)
        dump.open("depend-graph.txt");
    m_hasNoDeadCode = false;
    SlcReduceNumberTmps().Reduce(list, *m_graph, Liveness(),
                                 m_options.m_printBlockICode ? &dump : nullptr);
    m_defUse->ForgetAll();
    SlcForgetTmpVarDetail(*m_variables);
}

void SlcOptimizeBasicBlocks::DumpBlocks() const
{
    std::ofstream out("blockicode.txt");
    for (const auto& block : m_graph->Blocks())
        block.Print(out);
}
