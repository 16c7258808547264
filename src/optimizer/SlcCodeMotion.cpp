// Loop-invariant code motion over natural loops (Alfred Aho, Ravi Sethi and Jeffrey Ullman,
// "Compilers: principles, techniques, and tools", 1986, sections 10.4 and 10.7).
//
//     S:; {; x = p + 1; y = x * i; }; ... goto S
// becomes
//     {; x = p + 1; }; S:; {; y = x * i; }; ... goto S
//
// An instruction leaves the loop if it only computes, if its operands are not written in the loop
// or have just left it, if it is the one write to its variable, if every way out of the loop passes
// it (so that it would have run), and if nobody in the loop wants the value from before. What stood
// in a parallel run gets a run of its own in front of the head.
//
// One deviation from the book: what moves is placed in front of the label of the head, and no block
// is made for it; a loop that is also entered by a jump from elsewhere keeps all.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcCodeMotion, ...).

#include "optimizer/SlcCodeMotion.h"

#include <algorithm>
#include <string>

#include "icode/SlcICodes.h"
#include "optimizer/SlcUniformAccess.h"
#include "support/SlcDiagnostics.h"

namespace {

/// What no set can tell of an instruction's operands.
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
    // Any argument of a call may be written, as the data-flow sets have it too.
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

/// The sets do not count this as a write, since the value before it goes into the one behind.
/// Nothing that the inversion changes in each round may move, though. -1 for other instructions.
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
      m_dominators(graph)
{
}

bool SlcCodeMotion::OptimizeLoops(SlcListICode& list)
{
    for (const auto& block : m_graph.Blocks()) {
        const auto latches = LatchesOf(block.GetBlockId());
        if (latches.empty())
            continue;
        // Every loop is looked at, since any may be without an exit.
        Loop loop = BuildLoop(block.GetBlockId(), latches);
        if (loop.exits.empty())
            WarnOfInfiniteLoop();
        if (!IsEnteredFromFront(loop.head))
            continue;
        CollectFacts(loop);
        MoveOutOf(loop);
    }
    if (m_hasMoved.empty())
        return false;
    std::deque<SlcPtr<SlcICode>> output;
    for (const auto& block : m_graph.Blocks()) {
        for (auto& code : InFrontOf(block.GetBlockId()))
            output.push_back(std::move(code));
        for (const auto& code : block.GetListICode())
            if (m_hasMoved.count(&*code) == 0)
                output.push_back(code);
    }
    list.m_icodes.swap(output);
    return true;
}

std::vector<int> SlcCodeMotion::LatchesOf(int head) const
{
    std::vector<int> latches;
    for (const int predecessor : m_graph.Blocks()[head].GetPredBlocks())
        if (predecessor >= head)
            latches.push_back(predecessor);
    // Only a loop that is entered by its head alone has a place in front of it.
    const bool isLoop = std::all_of(latches.begin(), latches.end(),
                                    [&](int latch) { return m_dominators.Dominates(head, latch); });
    if (!isLoop)
        return {};
    return latches;
}

// A jump from elsewhere would pass by what stands in front of the head.
bool SlcCodeMotion::IsEnteredFromFront(int head) const
{
    const auto& predecessors = m_graph.Blocks()[head].GetPredBlocks();
    return std::all_of(predecessors.begin(), predecessors.end(), [&](int predecessor) {
        return predecessor >= head || predecessor == head - 1;
    });
}

SlcCodeMotion::Loop SlcCodeMotion::BuildLoop(int head, const std::vector<int>& latches)
{
    Loop loop;
    loop.head = head;
    std::unordered_set<int> members = {head};
    std::vector<int> pending;
    const auto enter = [&](int block) {
        if (members.insert(block).second)
            pending.push_back(block);
    };
    for (const int latch : latches)
        enter(latch);
    while (!pending.empty()) {
        const int block = pending.back();
        pending.pop_back();
        for (const int predecessor : m_graph.Blocks()[block].GetPredBlocks())
            enter(predecessor);
    }
    loop.blocks.assign(members.begin(), members.end());
    std::sort(loop.blocks.begin(), loop.blocks.end());
    for (const int block : loop.blocks) {
        const auto& successors = m_graph.Blocks()[block].GetNextBlocks();
        if (std::any_of(successors.begin(), successors.end(),
                        [&](int next) { return members.count(next) == 0; }))
            loop.exits.push_back(block);
    }
    return loop;
}

void SlcCodeMotion::CollectFacts(Loop& loop)
{
    SlcDefUse& defUse = m_analysis.DefUse();
    OperandFacts facts;
    std::vector<int> defs;
    for (const int block : loop.blocks) {
        for (const auto& code : m_graph.Blocks()[block].GetListICode()) {
            defUse.Compute(code);
            for (const int used : defUse.Uses()) {
                auto& users = loop.usingBlocks[used];
                if (users.empty() || users.back() != block)
                    users.push_back(block);
            }
            defs.assign(defUse.Defs().begin(), defUse.Defs().end());
            std::sort(defs.begin(), defs.end());
            defs.erase(std::unique(defs.begin(), defs.end()), defs.end());
            for (const int defined : defs)
                ++loop.writes[defined];
            if (const int flag = FlagInvertedInPlace(code); flag >= 0)
                ++loop.writes[flag];
            facts.Collect(code);
            loop.untracked.insert(facts.m_untrackedWrites.begin(), facts.m_untrackedWrites.end());
        }
    }
}

void SlcCodeMotion::MoveOutOf(const Loop& loop)
{
    m_movedVariables.clear();
    bool inParallelRun = false;
    for (const int block : loop.blocks) {
        const auto& codes = m_graph.Blocks()[block].GetListICode();
        for (std::size_t place = 0; place < codes.size(); ++place) {
            const auto& code = codes[place];
            // A run is straight-line code or guards, and so begins and ends inside the loop.
            if (Is<SlcBeginParallelICode>(code))
                inParallelRun = true;
            else if (Is<SlcEndParallelICode>(code))
                inParallelRun = false;
            if (!CanMove(loop, block, place))
                continue;
            m_movedVariables.insert(m_analysis.DefUse().Defs().front());
            m_moved[loop.head].push_back({code, inParallelRun});
            m_hasMoved.insert(&*code);
        }
    }
}

// Leaves the reads and writes of the instruction in `DefUse` of the analysis.
bool SlcCodeMotion::CanMove(const Loop& loop, int block, std::size_t place)
{
    const auto& code = m_graph.Blocks()[block].GetListICode()[place];
    if (!code->Is(SlcICodeTraits::MovesFromLoops) || m_hasMoved.count(&*code) != 0)
        return false;
    OperandFacts facts;
    facts.Collect(code);
    const bool readsWrittenUntracked =
        std::any_of(facts.m_untrackedReads.begin(), facts.m_untrackedReads.end(),
                    [&](const SlcLexType* read) { return loop.untracked.count(read) != 0; });
    if (facts.m_touchesArray || !facts.m_untrackedWrites.empty() || readsWrittenUntracked)
        return false;
    // A loop may be left before its body runs: then nothing of the body may have happened.
    const bool alwaysRuns = std::all_of(loop.exits.begin(), loop.exits.end(), [&](int exit) {
        return m_dominators.Dominates(block, exit);
    });
    if (!alwaysRuns)
        return false;
    m_analysis.DefUse().Compute(code);
    const auto defs = m_analysis.DefUse().Defs();
    if (defs.size() != 1 || loop.writes.at(defs.front()) != 1 || !OperandsAreInvariant(loop))
        return false;
    return ReachesAllUses(loop, block, defs.front());
}

bool SlcCodeMotion::OperandsAreInvariant(const Loop& loop)
{
    const auto uses = m_analysis.DefUse().Uses();
    return std::all_of(uses.begin(), uses.end(), [&](int used) {
        return loop.writes.count(used) == 0 || m_movedVariables.count(used) != 0;
    });
}

// The value of the loop's single write is the one that all reads want: nothing comes in from
// before the loop, and no read comes before the write. A read that stands before the write in its
// own block makes the variable alive at the front of that block.
bool SlcCodeMotion::ReachesAllUses(const Loop& loop, int block, int variable) const
{
    if (m_analysis.IsLiveIn(loop.head, variable) || m_analysis.IsLiveIn(block, variable))
        return false;
    const auto users = loop.usingBlocks.find(variable);
    return users == loop.usingBlocks.end() ||
           std::all_of(users->second.begin(), users->second.end(),
                       [&](int user) { return m_dominators.Dominates(block, user); });
}

std::deque<SlcPtr<SlcICode>> SlcCodeMotion::InFrontOf(int head) const
{
    static int sm_headCounter = 0;
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
    for (const Moved& entry : moved->second) {
        SlcUniformAccess own;
        own.Add(entry.code, {});  // what touches an array stays in the loop
        if (!entry.inParallelRun || !uniforms.MayJoin(own))
            closeRun();
        uniforms.Join(own);
        if (entry.inParallelRun && openRun.Null()) {
            openRun = MakeShared<SlcLabelICode>("LHead" + std::to_string(sm_headCounter++));
            codes.push_back(MakeShared<SlcBeginParallelICode>(openRun));
        }
        codes.push_back(entry.code);
    }
    closeRun();
    return codes;
}

void SlcCodeMotion::WarnOfInfiniteLoop()
{
    static bool sm_hasWarned = false;
    if (!sm_hasWarned)
        WarningNoSource("Generated code for an infinite loop.");
    sm_hasWarned = true;
}
