// Runs passes in rounds until nothing changes:
//
//     round     1. dead code           2. empty blocks     3. constants and folding     4. loops
//               the first of them that changes the list ends the round
//     no change temporaries share storage, once; the rounds go on if that leaves some x = x
//     no change the end
//
// Graph and liveness are kept from round to round. They are updated in place after a change that
// only removes instructions from blocks, or replaces operands by constants and computations by
// assignments other than x = x, and leaves the blocks and edges as they are. Any other change
// discards them; the graph is rebuilt in the next round, and liveness when a pass needs it. A test
// compares the resulting code with that of rounds that always rebuild both (m_rebuildEachRound).
//
// Passes 1 to 3 are skipped while they are known to find nothing (m_isClean):
//
//     dead code       after a search that leaves none, until instructions or operands are replaced,
//                     code is hoisted, temporaries are merged, or a conditional jump, a guard or
//                     an unreachable block is removed
//     empty blocks    after a search that found none, until the removal of dead code makes two
//                     labels, jumps or brackets adjacent, or pass 3, pass 4 or the merging of
//                     temporaries discards the graph. If accesses to uniform variables keep two
//                     adjacent runs from becoming one, until any change
//     constants       after a walk that at most replaced operands, and computations by assignments
//                     other than x = x, since a second walk would know no more than the first. This
//                     holds until pass 1 removes all code of a block, an x = x or an `or` of flags,
//                     or until pass 2, pass 4 or the merging of temporaries changes the list, since
//                     more values may then be known
//
// Constants are propagated and folded in one walk, instruction by instruction, so that a chain like
// `x = 2; y = x + 1; z = y` takes one round instead of a round per link.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcICodeOptimizer, ...), by all levels against
// each other in tests/random, and by tests/random/OptimizerRoundsTest.cpp.

#include "optimizer/SlcOptimizeBasicBlocks.h"

#include "icode/SlcICodeValidator.h"
#include "optimizer/SlcCodeMotion.h"
#include "optimizer/SlcConvertConstOp.h"
#include "optimizer/SlcConvertTmpVarDetail.h"
#include "optimizer/SlcCopyPropagation.h"
#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDeadCodeElimination.h"
#include "optimizer/SlcReduceNumberTmps.h"
#include "optimizer/SlcRemoveAt.h"
#include "optimizer/SlcRemoveEmptyBlocks.h"
#include "support/SlcDiagnostics.h"
#include "support/SlcFiles.h"

namespace {

constexpr int k_maxRounds = 1000;  // a bound, not an error: the code is correct after each round

/// Writes a dump for debugging passes.
void WriteDump(const std::string& path, const SlcText& text)
{
    if (!SlcWriteFile(path, text.Str()))
        SevereWarning("shaderqx", "The dump of a pass could not be written to '" + path + "'");
}

/// Returns the successor that a block no longer reaches after folding has replaced its last
/// instruction by `folded` (null: removed it); -1 if there is none. `isDropping` means that this
/// instruction guards code that can never run, or is in such code.
int DroppedSuccessor(const SlcBasicBlock& block, const SlcPtr<SlcICode>& folded, bool isDropping)
{
    const auto& next = block.GetNextBlocks();
    if (next.size() < 2 || folded == block.GetListICode().back())
        return -1;
    // A jump that has become unconditional, or a guard whose code is dropped, continues at its
    // label; a removed jump, or a removed guard whose code stays, falls through.
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
    ForgetAll();
    bool updated = false;
    bool changed = true;
    for (int round = 0; changed && round < maxRounds; ++round) {
        BuildGraph(*list);
        changed = EliminateCode(*list) || ChangeCode(*list);
        if (m_options.m_validateICode)
            SlcICodeValidator::Require(*list, SlcICodeValidator::Stage::Optimized);
        if (!changed && !updated) {
            changed = UpdateVariables(*list);
            updated = true;
        }
    }
    if (m_options.m_convertTmpVarDetail)
        SlcConvertTmpVarDetail(*list, *m_variables);
    if (m_options.m_printBlockICode) {
        BuildGraph(*list);
        DumpBlocks();
    }
}

void SlcOptimizeBasicBlocks::ForgetAll()
{
    m_analysis.reset();
    m_graph.reset();
    m_isClean = {};
}

void SlcOptimizeBasicBlocks::BuildGraph(SlcListICode& list)
{
    // Each round starts without previous knowledge for dumps, and in the test that compares rounds.
    if (m_options.m_printBlockICode || m_options.m_rebuildEachRound) {
        ForgetAll();
        m_defUse->ForgetAll();
    }
    if (!m_graph) {
        m_analysis.reset();
        m_graph = std::make_unique<SlcControlFlowGraph>(list);
    }
    if (m_options.m_printBlockICode) {
        SlcText out;
        Liveness().Print(out);
        WriteDump("usedefvars.txt", out);
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
    return m_options.m_deadCodeElimination && (RemoveDeadCode(list) || RemoveEmptyBlocks(list));
}

bool SlcOptimizeBasicBlocks::RemoveDeadCode(SlcListICode& list)
{
    if (m_isClean.ofDeadCode)
        return false;
    SlcDeadCodeElimination pass;
    const bool changed = pass.EliminateCode(list, *m_graph, Liveness());
    m_isClean.ofDeadCode = pass.IsComplete();
    if (!changed)
        return false;
    m_isClean.ofEmptyBlocks = m_isClean.ofEmptyBlocks && pass.KeepsMarksApart() && !m_hasKeptSeams;
    m_isClean.ofConstants = m_isClean.ofConstants && pass.KeepsConstants();
    if (!pass.KeepsGraph())
        m_graph.reset();
    return true;
}

bool SlcOptimizeBasicBlocks::RemoveEmptyBlocks(SlcListICode& list)
{
    if (m_isClean.ofEmptyBlocks)
        return false;
    SlcRemoveEmptyBlocks pass;
    bool changed = pass.RemoveUnreachable(*m_graph, list);
    changed |= pass.RemoveBlocks(list);
    m_hasKeptSeams = pass.HasKeptSeams();
    m_isClean.ofEmptyBlocks = !changed;
    if (!changed)
        return false;
    m_isClean.ofDeadCode = m_isClean.ofDeadCode && !pass.HasRemovedReads();
    m_isClean.ofConstants = false;
    m_graph.reset();
    return true;
}

bool SlcOptimizeBasicBlocks::ChangeCode(SlcListICode& list)
{
    if (!m_isClean.ofConstants && PropagateAndFold(list))
        return true;
    if (!m_options.m_codeMotion || !SlcCodeMotion(*m_graph, Liveness()).OptimizeLoops(list))
        return false;
    ForgetAll();
    return true;
}

bool SlcOptimizeBasicBlocks::PropagateAndFold(SlcListICode& list)
{
    SlcCopyPropagation propagation(*m_graph, *m_variables);
    SlcConvertConstOp folding;
    folding.Begin();
    std::vector<std::size_t> removed;
    std::vector<int> changedBlocks;
    bool isSettled = true;  // only operands were replaced, and computations by assignments
    std::size_t place = 0;
    for (const auto& block : m_graph->Blocks()) {
        propagation.EnterBlock(block);
        bool isChanged = false;
        SlcPtr<SlcICode> code;
        const std::size_t end = place + block.GetListICode().size();
        for (; place < end; ++place) {
            const SlcPtr<SlcICode> original = m_graph->Codes()[place];
            code = original;
            // Brackets of runs have no operands.
            const bool isBracket =
                original->Is(SlcICodeTraits::OpensRun | SlcICodeTraits::ClosesRun);
            if (m_options.m_copyPropagation && !isBracket)
                propagation.Propagate(code);
            if (m_options.m_convertConstOps && !isBracket) {
                code = folding.Fold(original);
                // If the new instruction assigns a constant, later instructions may use it.
                if (code && !(code == original) && m_options.m_copyPropagation)
                    propagation.Propagate(code);
            }
            if (!code || folding.IsDropping()) {
                removed.push_back(place);
                continue;
            }
            isChanged = isChanged || code->m_flowIndex < 0;
            if (code == original)
                continue;
            list.m_icodes[place] = code;
            isSettled = isSettled && SlcConvertConstOp::IsSettled(*code);
            if (isSettled)
                m_graph->Replace(place, code);
        }
        propagation.LeaveBlock(block);
        propagation.DropEdge(block, DroppedSuccessor(block, code, folding.IsDropping()));
        if (isChanged)
            changedBlocks.push_back(block.GetBlockId());
    }
    SlcRemoveAt(removed, list.m_icodes);
    NoteFolded(isSettled && removed.empty(), changedBlocks);
    return propagation.HasChanged() || folding.HasChanged();
}

void SlcOptimizeBasicBlocks::NoteFolded(bool isSettled, std::span<const int> changedBlocks)
{
    m_isClean.ofConstants = isSettled;
    if (!isSettled) {
        m_isClean.ofDeadCode = false;
        m_isClean.ofEmptyBlocks = false;
        m_graph.reset();
    } else if (!changedBlocks.empty()) {
        m_isClean.ofDeadCode = false;
        m_isClean.ofEmptyBlocks = m_isClean.ofEmptyBlocks && !m_hasKeptSeams;
        if (m_analysis)
            m_analysis->Update(changedBlocks);
    }
}

bool SlcOptimizeBasicBlocks::UpdateVariables(SlcListICode& list)
{
    if (!m_options.m_reduceNumberTmps)
        return false;
    // In C++ a local is stored once or for each point, and only locals stored in the same way may
    // share storage. This is forgotten again below, since code motion could move the write of a
    // local that is stored once into another run.
    if (m_options.m_convertTmpVarDetail)
        SlcConvertTmpVarDetail(list, *m_variables);
    SlcText dump;
    const bool assignsToItself = SlcReduceNumberTmps().Reduce(
        list, *m_graph, Liveness(), m_options.m_printBlockICode ? &dump : nullptr);
    if (m_options.m_printBlockICode)
        WriteDump("depend-graph.txt", dump);
    m_defUse->ForgetAll();
    SlcForgetTmpVarDetail(*m_variables);
    ForgetAll();
    return assignsToItself;
}

void SlcOptimizeBasicBlocks::DumpBlocks() const
{
    SlcText out;
    for (const auto& block : m_graph->Blocks())
        block.Print(out);
    WriteDump("blockicode.txt", out);
}
