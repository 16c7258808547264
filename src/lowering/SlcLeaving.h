#pragma once

#include <deque>
#include <vector>

#include "lowering/SlcConditions.h"

class SlcProcCallExprNode;

/// The varying loops and function bodies around the code being lowered, and the flags that leaving
/// one of them clears.
///
/// A point leaves by losing its flags, from the innermost level up to that of what it leaves. In a
/// list that runs without a grid there is one point, so that all flags would be uniform: there who
/// leaves jumps.
class SlcLeaving {
public:
    /// A function body that is being expanded.
    struct Body {
        SlcOperand flag;    // points that have not returned; null unless some return early
        SlcOperand result;  // their value; null unless some return early with one
        SlcLabel end;       // null unless some return early
        SlcProcCallExprNode* call;
        std::size_t loops = 0;  // varying loops around the call
        bool ended = false;     // at a `return` that all points reach; its value is on the stack
    };

    /// Both outlive it.
    SlcLeaving(SlcListBuilder& list, SlcConditions& conditions)
        : m_list(list),
          m_conditions(conditions)
    {
    }

    // Loops. `level` counts from the innermost, which is 1.
    /// `flag`: points still in the loop; `cond`: those of this round. Opens the level of conditions
    /// that guards the body by `cond` and `uniformFlag`, and `EndParallelLoop` closes it.
    void BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                           const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                           const SlcLabel& continueLabel);
    void EndParallelLoop();
    /// Of a list that runs without a grid.
    void BeginLoopOfJumps(const SlcLabel& breakLabel, const SlcLabel& continueLabel);
    void EndLoopOfJumps() { m_loops.pop_back(); }
    [[nodiscard]] std::size_t CountLoops() const { return m_loops.size(); }
    /// A `continue` of the innermost loop has been met.
    [[nodiscard]] bool IsContinued() const { return m_loops.back().isContinued; }
    /// `break` and `continue` of the loop at `level`, which must be there. Points lose the flags of
    /// all conditions and loops on the way out, and the uniform flags are computed anew.
    void GenBreak(std::size_t level);
    void GenContinue(std::size_t level);

    // Bodies.
    void BeginBody(Body body);
    void EndBody() { m_bodies.pop_back(); }
    /// The innermost.
    [[nodiscard]] Body& CurrentBody() { return m_bodies.back(); }
    /// All points have left the innermost body, so that no code follows in it. Who lowers
    /// statements asks after each.
    [[nodiscard]] bool HasBodyEnded() const { return !m_bodies.empty() && m_bodies.back().ended; }
    /// From a body that some points leave early: its value has been copied into `result` by now.
    void GenReturn();

private:
    /// A varying loop, or any loop of a list that runs without a grid, which has no flags.
    struct Loop {
        SlcOperand flag;  // points still in the loop
        SlcOperand cond;  // points active in this round
        SlcLabel breakLabel;
        SlcLabel continueLabel;
        bool isContinued = false;
    };

    /// The innermost is at level 1.
    [[nodiscard]] Loop& LoopAt(std::size_t level) { return m_loops[m_loops.size() - level]; }
    void AddLoopFlags(std::deque<SlcOperand>& flags, std::size_t count);
    void GenLeave(const SlcPtr<SlcICode>& leave, std::deque<SlcOperand>& flags,
                  const SlcOperand& outermost);

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    std::vector<Loop> m_loops;   // the innermost is the last
    std::vector<Body> m_bodies;  // likewise
};
