// Loop-invariant code motion over natural loops (Alfred Aho, Ravi Sethi and Jeffrey Ullman,
// "Compilers: principles, techniques, and tools", 1986, sections 10.4 and 10.7).
//
//     S:; {; x = p + 1; y = x * i; }; ... goto S
// becomes
//     {; x = p + 1; }; S:; {; y = x * i; }; ... goto S
//
// An instruction is hoisted out of a loop if all of this is true:
//
//     - its class has the trait MovesFromLoops, and it accesses no array
//     - its operands are not written in the loop, except by instructions already hoisted out of it
//     - it writes a variable with a number (SlcVariableNumbers), and nothing else in the loop does
//     - it dominates all exits of the loop, so that it would have run
//     - it dominates all reads of its variable in the loop
//     - the old value of its variable is not live into the loop
//
// Instructions hoisted out of parallel runs are placed in new runs before the loop.
//
// Ours departs from the book in two ways. Hoisted instructions are placed before the head of the
// loop without a separate preheader block, so nothing is hoisted out of a loop that is also entered
// by a jump. And the reads and writes of all loops are collected once, sorted by variable and by
// the number of the loop in SlcLoopNest, since the cost of nested loops would otherwise grow with
// their depth.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcCodeMotion, ...).

#include "optimizer/SlcCodeMotion.h"

#include <algorithm>
#include <string>

#include "icode/SlcICodes.h"
#include "optimizer/SlcUniformAccess.h"
#include "support/SlcCompilation.h"
#include "support/SlcDiagnostics.h"

namespace {

struct MotionCounters {
    int heads = 0;  // number of runs made before loops, for unique names of labels
    bool hasWarned = false;
};

/// Facts about an instruction's operands that the data-flow sets do not contain.
class OperandFacts : public SlcOperandWalker {
public:
    void Collect(const SlcPtr<SlcICode>& code)
    {
        m_touchesArray = false;
        m_untrackedReads.clear();
        m_untrackedWrites.clear();
        Visit(code);
    }
    bool m_touchesArray = false;
    std::vector<const SlcLexType*> m_untrackedReads;
    std::vector<const SlcLexType*> m_untrackedWrites;

private:
    using SlcOperandWalker::Case;
    // Any argument of a call may be written, as in the data-flow sets.
    void Case(SlcPtr<SlcCallICode> code) override
    {
        SlcOperandWalker::Case(code);
        for (SlcOperand& arg : code->m_args)
            Write(arg);
    }
    void Case(SlcPtr<SlcCallDSOICode> code) override
    {
        SlcOperandWalker::Case(code);
        for (SlcOperand& arg : code->m_args)
            Write(arg);
    }
    void Read(SlcOperand& operand) override { Note(operand, m_untrackedReads); }
    void Write(SlcOperand& operand) override { Note(operand, m_untrackedWrites); }

    void Note(const SlcOperand& operand, std::vector<const SlcLexType*>& untracked)
    {
        const SlcTypeNode* type = operand->GetType();
        m_touchesArray |= type->IsArrayType() || type->IsArrayRefType();
        if (operand->IsIdent() && SlcVariableNumbers::Of(operand) < 0)
            untracked.push_back(&*operand);
    }
};

template <class Mark>
bool Is(const SlcPtr<SlcICode>& code)
{
    return dynamic_cast<const Mark*>(&*code) != nullptr;
}

/// True if the block ends in a jump to its only successor.
bool OnlyJumps(const SlcBasicBlock& block)
{
    return Is<SlcGotoICode>(block.GetListICode().back()) && block.GetNextBlocks().size() == 1;
}

/// Returns the number of the flag that the instruction inverts in place; -1 for other instructions.
/// The data-flow sets do not count this as a write, since the new value depends on the old one. But
/// nothing that depends on the flag may be hoisted, since the flag changes in each iteration.
int FlagInvertedInPlace(const SlcPtr<SlcICode>& code)
{
    const auto* inversion = dynamic_cast<const SlcInvertBoolFlagICode*>(&*code);
    return inversion && inversion->m_dest == inversion->m_source
               ? SlcVariableNumbers::Of(inversion->m_dest)
               : -1;
}

}  // namespace

SlcCodeMotion::SlcCodeMotion(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis)
    : m_graph(graph),
      m_analysis(analysis),
      m_dominators(graph),
      m_nest(graph, m_dominators)
{
}

bool SlcCodeMotion::OptimizeLoops(SlcListICode& list)
{
    if (m_nest.Loops().empty())
        return false;
    CollectFacts();
    for (const Loop& loop : m_nest.Loops()) {
        // Check every loop for exits, even if nothing can be hoisted out of it.
        if (loop.lastBeforeExits < 0)
            WarnOfInfiniteLoop();
        if (CanHoistBefore(loop.head))
            MoveOutOf(loop);
    }
    if (m_hasMoved.empty())
        return false;
    std::deque<SlcPtr<SlcICode>> output;
    for (const auto& block : m_graph.Blocks()) {
        for (auto& code : HoistedCodeBefore(block.GetBlockId()))
            output.push_back(std::move(code));
        for (const auto& code : block.GetListICode())
            if (m_hasMoved.count(&*code) == 0)
                output.push_back(code);
    }
    list.m_icodes.swap(output);
    return true;
}

// A jump from outside the loop would skip the instructions before the head. So would a jump to the
// head at the end of the block before it, which remains without dead code elimination.
bool SlcCodeMotion::CanHoistBefore(int head) const
{
    const auto& predecessors = m_graph.Blocks()[head].GetPredBlocks();
    return std::all_of(predecessors.begin(), predecessors.end(), [&](int predecessor) {
        return predecessor >= head ||
               (predecessor == head - 1 && !OnlyJumps(m_graph.Blocks()[predecessor]));
    });
}

void SlcCodeMotion::CollectFacts()
{
    bool inParallelRun = false;
    OperandFacts facts;
    m_candidates.resize(m_graph.Blocks().size());
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        const int place = m_nest.PlaceOf(id);
        if (place == SlcLoopNest::k_none)
            continue;
        for (const auto& code : block.GetListICode()) {
            // A run contains only straight-line code and guards, so it begins and ends inside the
            // loop.
            if (Is<SlcBeginParallelICode>(code))
                inParallelRun = true;
            else if (Is<SlcEndParallelICode>(code))
                inParallelRun = false;
            facts.Collect(code);
            for (const SlcLexType* written : facts.m_untrackedWrites)
                m_untrackedWrites.emplace_back(written, place);
            CollectFactsOf(code, id, place);
            if (!facts.m_touchesArray && facts.m_untrackedWrites.empty() &&
                code->Is(SlcICodeTraits::MovesFromLoops))
                m_candidates[id].push_back(
                    {code, inParallelRun, SlcLoopNest::k_none, SlcLoopNest::k_none, -1});
        }
    }
    std::sort(m_writes.begin(), m_writes.end());
    std::sort(m_untrackedWrites.begin(), m_untrackedWrites.end());
    std::sort(m_users.begin(), m_users.end());
    FindLimits();
}

void SlcCodeMotion::FindLimits()
{
    SlcDefUse& defUse = m_analysis.DefUse();
    for (int block = 0; block < static_cast<int>(m_candidates.size()); ++block) {
        for (Candidate& candidate : m_candidates[block]) {
            defUse.Compute(candidate.code);
            for (const int defined : defUse.Defs())
                candidate.staysIn =
                    std::max(candidate.staysIn, InnermostWriting(block, defined, true));
            for (const int used : defUse.Uses()) {
                const int place = InnermostWriting(block, used, false);
                if (place <= candidate.waitsIn)
                    continue;
                candidate.waitsIn = place;
                candidate.waitsFor = used;
            }
        }
    }
}

// If a loop around the block writes the variable, it contains the last write before the block or
// the first one after it, in the order of the places.
int SlcCodeMotion::InnermostWriting(int block, int variable, bool isOwn) const
{
    const std::pair here(variable, m_nest.PlaceOf(block));
    const auto own = std::lower_bound(m_writes.begin(), m_writes.end(), here);
    const auto next = isOwn ? own + 1 : own;
    int innermost = SlcLoopNest::k_none;
    if (own != m_writes.begin() && std::prev(own)->first == variable)
        innermost = m_nest.CommonPlace(block, std::prev(own)->second);
    if (next != m_writes.end() && next->first == variable)
        innermost = std::max(innermost, m_nest.CommonPlace(block, next->second));
    return innermost;
}

void SlcCodeMotion::CollectFactsOf(const SlcPtr<SlcICode>& code, int block, int place)
{
    SlcDefUse& defUse = m_analysis.DefUse();
    defUse.Compute(code);
    for (const int used : defUse.Uses())
        m_users.push_back({used, place, block});
    std::vector<int> defs(defUse.Defs().begin(), defUse.Defs().end());
    std::sort(defs.begin(), defs.end());
    defs.erase(std::unique(defs.begin(), defs.end()), defs.end());
    for (const int defined : defs)
        m_writes.emplace_back(defined, place);
    if (const int flag = FlagInvertedInPlace(code); flag >= 0)
        m_writes.emplace_back(flag, place);
}

// A loop may be left before its body runs, so code is hoisted only from blocks that always run.
void SlcCodeMotion::MoveOutOf(const Loop& loop)
{
    m_movedVariables.clear();
    for (const int block : m_nest.BlocksThatAlwaysRun(loop)) {
        for (const Candidate& candidate : m_candidates[block]) {
            if (IsHeld(loop, candidate) || !CanMove(loop, block, candidate.code))
                continue;
            m_movedVariables.insert(m_analysis.DefUse().Defs().front());
            m_movedSomewhere.insert(m_analysis.DefUse().Defs().front());
            m_moved[loop.head].push_back(candidate);
            m_hasMoved.insert(&*candidate.code);
        }
    }
}

// The compared loops all enclose the candidate, so a lower place means a loop further outside.
bool SlcCodeMotion::IsHeld(const Loop& loop, const Candidate& candidate) const
{
    return loop.place <= candidate.staysIn ||
           (loop.place <= candidate.waitsIn && m_movedSomewhere.count(candidate.waitsFor) == 0);
}

// If it returns true, the reads and writes of the instruction are in the analysis's `DefUse`.
bool SlcCodeMotion::CanMove(const Loop& loop, int block, const SlcPtr<SlcICode>& code)
{
    if (m_hasMoved.count(&*code) != 0)
        return false;
    OperandFacts facts;
    facts.Collect(code);
    if (std::any_of(
            facts.m_untrackedReads.begin(), facts.m_untrackedReads.end(),
            [&](const SlcLexType* read) { return WritesIn(loop, m_untrackedWrites, read) != 0; }))
        return false;
    m_analysis.DefUse().Compute(code);
    const auto defs = m_analysis.DefUse().Defs();
    if (defs.size() != 1 || WritesIn(loop, m_writes, defs.front()) != 1 ||
        !OperandsAreInvariant(loop))
        return false;
    return ReachesAllUses(loop, block, defs.front());
}

template <class Variable>
std::size_t SlcCodeMotion::WritesIn(const Loop& loop, const Writes<Variable>& writes,
                                    Variable variable)
{
    const auto place = [&](int at) {
        return std::lower_bound(writes.begin(), writes.end(), std::pair(variable, at));
    };
    return static_cast<std::size_t>(place(loop.end) - place(loop.place));
}

bool SlcCodeMotion::OperandsAreInvariant(const Loop& loop)
{
    const auto uses = m_analysis.DefUse().Uses();
    return std::all_of(uses.begin(), uses.end(), [&](int used) {
        return WritesIn(loop, m_writes, used) == 0 || m_movedVariables.count(used) != 0;
    });
}

// All reads of the variable in the loop see the value of its single write there if the variable is
// not live into the loop and no read precedes the write. A read before the write in the same block
// makes the variable live-in at that block.
bool SlcCodeMotion::ReachesAllUses(const Loop& loop, int block, int variable) const
{
    if (m_analysis.IsLiveIn(loop.head, variable) || m_analysis.IsLiveIn(block, variable))
        return false;
    const auto from = [&](int place) {
        return std::lower_bound(m_users.begin(), m_users.end(), User{variable, place, 0});
    };
    return std::all_of(from(loop.place), from(loop.end),
                       [&](const User& user) { return m_dominators.Dominates(block, user.block); });
}

std::deque<SlcPtr<SlcICode>> SlcCodeMotion::HoistedCodeBefore(int head) const
{
    int& headCounter = SlcPartOfCompilation<MotionCounters>().heads;
    std::deque<SlcPtr<SlcICode>> codes;
    const auto moved = m_moved.find(head);
    if (moved == m_moved.end())
        return codes;
    SlcLabel openRun;
    SlcUniformAccess uniforms;  // of the open run
    const auto closeRun = [&] {
        if (openRun)
            codes.push_back(MakeShared<SlcEndParallelICode>(openRun));
        openRun = nullptr;
        uniforms = {};
    };
    for (const Candidate& entry : moved->second) {
        SlcUniformAccess own;
        own.Add(entry.code, {});  // instructions that access arrays are never hoisted
        if (!entry.inParallelRun || !uniforms.MayJoin(own))
            closeRun();
        uniforms.Join(own);
        if (entry.inParallelRun && openRun.Null()) {
            openRun = MakeShared<SlcLabelICode>("LHead" + std::to_string(headCounter++));
            codes.push_back(MakeShared<SlcBeginParallelICode>(openRun));
        }
        codes.push_back(entry.code);
    }
    closeRun();
    return codes;
}

void SlcCodeMotion::WarnOfInfiniteLoop()
{
    bool& hasWarned = SlcPartOfCompilation<MotionCounters>().hasWarned;
    if (!hasWarned)
        WarningNoSource("Generated code for an infinite loop.");
    hasWarned = true;
}
