#pragma once

#include <deque>
#include <vector>

#include "lowering/SlcConditions.h"

class SlcProcCallExprNode;

/// The loops and function bodies that enclose the code being lowered and can be left, and the flags
/// to clear when points leave one.
///
/// On a grid, points can leave varying loops and bodies: code clears the flags at these points,
/// from the innermost level up to the level that they leave. A list that runs without a grid has
/// only one point, so all flags would be uniform; there, leaving any loop or body is a jump.
class SlcLeaving {
public:
    /// A function body that is being expanded.
    struct Body {
        SlcOperand flag;    // true at points that have not returned; null unless some points of a
                            // grid return early
        SlcOperand result;  // the return value; null unless some points return a value early
        SlcLabel end;       // null unless some return early
        SlcProcCallExprNode* call;
        std::size_t loops = 0;  // number of recorded loops that enclose the call
        bool ended = false;     // all points have reached a `return`; its value, if any, is on the
                                // stack
    };

    /// Both must outlive this object.
    SlcLeaving(SlcListBuilder& list, SlcConditions& conditions)
        : m_list(list),
          m_conditions(conditions)
    {
    }

    // Loops. `level` counts outward from the innermost loop, which is 1.
    /// Begins a varying loop: `flag` marks the points still in the loop, `cond` those active in
    /// this iteration. Opens the condition level that guards the body by `cond` and `uniformFlag`;
    /// `EndParallelLoop` closes it.
    void BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                           const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                           const SlcLabel& continueLabel);
    void EndParallelLoop();
    /// Begins a loop in a list that runs without a grid.
    void BeginLoopOfJumps(const SlcLabel& breakLabel, const SlcLabel& continueLabel);
    void EndLoopOfJumps() { m_loops.pop_back(); }
    [[nodiscard]] std::size_t CountLoops() const { return m_loops.size(); }
    /// Only for a varying loop: true if a `continue` of the innermost loop has been lowered.
    [[nodiscard]] bool IsContinued() const { return m_loops.back().isContinued; }
    /// Lower `break` and `continue` of the loop at `level`, which must exist. The emitted code
    /// clears the flags of all conditions and loops on the way out, and recomputes the uniform
    /// flags. In a list that runs without a grid, it is a jump.
    void GenBreak(std::size_t level);
    void GenContinue(std::size_t level);

    // Bodies.
    /// Begins the expansion of a body inside the current one; sets `body.loops`.
    void BeginBody(Body body);
    void EndBody() { m_bodies.pop_back(); }
    /// Returns the innermost body.
    [[nodiscard]] Body& CurrentBody() { return m_bodies.back(); }
    /// True if all points have left the innermost body, so that no more code is needed in it. Check
    /// it after each statement.
    [[nodiscard]] bool HasBodyEnded() const { return !m_bodies.empty() && m_bodies.back().ended; }
    /// Lowers a `return` in a body that some points leave early. The value, if any, must already be
    /// in `result`.
    void GenReturn();

private:
    /// A varying loop; or any loop of a list that runs without a grid, which has no flags.
    struct Loop {
        SlcOperand flag;  // true at points still in the loop
        SlcOperand cond;  // true at points active in this iteration
        SlcLabel breakLabel;
        SlcLabel continueLabel;
        bool isContinued = false;
    };

    /// The innermost loop is at level 1.
    [[nodiscard]] Loop& LoopAt(std::size_t level) { return m_loops[m_loops.size() - level]; }
    void AddLoopFlags(std::deque<SlcOperand>& flags, std::size_t count);
    void GenLeave(const SlcPtr<SlcICode>& leave, std::deque<SlcOperand>& flags,
                  const SlcOperand& outermost);

    SlcListBuilder& m_list;
    SlcConditions& m_conditions;
    std::vector<Loop> m_loops;   // the innermost is the last
    std::vector<Body> m_bodies;  // the innermost is the last
};
