// Lowers statements that leave loops and bodies.
//
//     while (x) { if (y) break; z; }      flags: l of the loop, c of its iteration, f of the `if`
//
// `break l f c` clears the three flags at the points where f is true. With f cleared, these points
// skip the rest of the branch, with c cleared the rest of the iteration, and with l cleared all
// further iterations. A `continue` does not clear l. The flags in between, of conditions and of
// inner loops, are also cleared.
//
// Tested by tests/lowering/SlcGenInterCodeLoopsTest.cpp and SlcGenInterCodeBodiesTest.cpp.

#include "lowering/SlcLeaving.h"

#include <utility>

#include "icode/SlcBoolICode.h"
#include "icode/SlcJumpICode.h"

void SlcLeaving::BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                                   const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                                   const SlcLabel& continueLabel)
{
    m_loops.push_back({flag, cond, breakLabel, continueLabel});
    m_conditions.BeginParallelIfTrue(cond, uniformFlag);
}

void SlcLeaving::EndParallelLoop()
{
    m_conditions.EndParallelIfTrue();
    m_loops.pop_back();
}

void SlcLeaving::BeginLoopOfJumps(const SlcLabel& breakLabel, const SlcLabel& continueLabel)
{
    m_loops.push_back({nullptr, nullptr, breakLabel, continueLabel});
}

void SlcLeaving::GenBreak(std::size_t level)
{
    const Loop& loop = LoopAt(level);
    if (m_list.IsWithoutGrid()) {
        m_list.AddICode(MakeShared<SlcGotoICode>(loop.breakLabel));
        return;
    }
    const auto leave = MakeShared<SlcBreakICode>(loop.breakLabel);
    AddLoopFlags(leave->m_flags, level);
    GenLeave(leave, leave->m_flags, loop.cond);
}

void SlcLeaving::GenContinue(std::size_t level)
{
    Loop& loop = LoopAt(level);
    if (m_list.IsWithoutGrid()) {
        m_list.AddICode(MakeShared<SlcGotoICode>(loop.continueLabel));
        return;
    }
    const auto leave = MakeShared<SlcContinueICode>(loop.continueLabel);
    AddLoopFlags(leave->m_flags, level - 1);
    loop.isContinued = true;
    GenLeave(leave, leave->m_flags, loop.cond);
}

void SlcLeaving::BeginBody(Body body)
{
    body.loops = m_loops.size();
    m_bodies.push_back(std::move(body));
}

void SlcLeaving::GenReturn()
{
    const Body& body = m_bodies.back();
    if (m_list.IsWithoutGrid()) {
        m_list.AddICode(MakeShared<SlcGotoICode>(body.end));
        return;
    }
    const auto leave = MakeShared<SlcBreakICode>(body.end);
    AddLoopFlags(leave->m_flags, m_loops.size() - body.loops);
    GenLeave(leave, leave->m_flags, body.flag);
}

/// Appends the flags of the `count` innermost loops, from the innermost outward.
void SlcLeaving::AddLoopFlags(std::deque<SlcOperand>& flags, std::size_t count)
{
    for (std::size_t level = 1; level <= count; ++level)
        flags.push_back(LoopAt(level).flag);
}

/// Adds `leave`, a `break` or `continue` that clears `flags` and the flags of all levels up to and
/// including the level whose flag is `outermost`. Updates the uniform flags, so that guards skip
/// code once no point is left.
void SlcLeaving::GenLeave(const SlcPtr<SlcICode>& leave, std::deque<SlcOperand>& flags,
                          const SlcOperand& outermost)
{
    const auto& levels = m_conditions.Levels();
    std::vector<SlcPtr<SlcICode>> updates;
    for (auto level = levels.rbegin(); level != levels.rend(); ++level) {
        flags.push_back(level->flag);
        updates.push_back(MakeShared<SlcSetUniformBoolFlagICode>(level->uniformFlag, level->flag));
        if (level->flag == outermost)
            break;
    }
    m_conditions.AddInBlock(SlcDetailNode::AVarying(), leave);
    for (const auto& update : updates)
        m_list.AddICode(update);
}
