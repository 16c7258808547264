#pragma once

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDominators.h"
#include "optimizer/SlcLoopNest.h"

/// Hoists loop-invariant computations. Only assignments, arithmetic, comparisons, and constructions
/// of points, colors and matrices move (the trait MovesFromLoops), and only if they access no
/// array.
///
/// Hoisted code is placed before the head of a natural loop, the block at which the loop is
/// entered, so that back edges skip the code. Only the blocks that always run in a loop are
/// searched. The body of an inner loop is usually not among them, so the cost does not grow with
/// the depth of nesting. Each instruction searched costs O(log n), plus the number of reads of its
/// variable in the loop if it passes all other tests.
class SlcCodeMotion {
public:
    /// Both must belong to the list to optimize, and outlive the pass.
    SlcCodeMotion(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// Optimizes the loops of `list`. True if an instruction was moved; graph and analysis are then
    /// stale. Warns if a loop has no exit, once per compilation.
    [[nodiscard]] bool OptimizeLoops(SlcListICode& list);

private:
    using Loop = SlcLoopNest::Loop;
    /// An instruction in a loop that may move, judged by its class and its operands alone. Most
    /// candidates have an operand that the innermost loop writes, and cannot leave any loop. So the
    /// limits of each are stored, and `CanMove` runs only for loops that they do not exclude. A
    /// place is the number of a loop in `SlcLoopNest`, higher than those of the loops around it;
    /// -1 stands for no loop.
    struct Candidate {
        SlcPtr<SlcICode> code;
        bool inParallelRun;
        int staysIn;   // place of the innermost loop around it with another write of its variable
        int waitsIn;   // place of the innermost loop around it that writes one of its operands
        int waitsFor;  // the number of that operand, whose definition may be hoisted first; or -1
    };
    /// A block that reads a variable. Sorted by variable, then by the place of the innermost loop
    /// around the block.
    struct User {
        int variable;
        int place;
        int block;
        // The check mistakes the comparison with zero for one with a null pointer.
        // NOLINTNEXTLINE(modernize-use-nullptr)
        auto operator<=>(const User&) const = default;
    };
    /// For each write in a loop, the variable and the place of the innermost loop around the write.
    template <class Variable>
    using Writes = std::vector<std::pair<Variable, int>>;

    /// True if code before the head runs exactly when the loop is entered.
    [[nodiscard]] bool CanHoistBefore(int head) const;
    /// Collects what the loops write and read, and the candidates with their limits.
    void CollectFacts();
    /// Computes the limits of each candidate.
    void FindLimits();
    /// Returns the place of the innermost loop around `block` that writes `variable`; -1 if there
    /// is none. With `isOwn`, ignores one write directly in the innermost loop around `block`,
    /// which is that of the candidate itself.
    [[nodiscard]] int InnermostWriting(int block, int variable, bool isOwn) const;
    void CollectFactsOf(const SlcPtr<SlcICode>& code, int block, int place);
    /// Marks the instructions that can be hoisted out of `loop` as moved, and saves them for
    /// insertion before the head.
    void MoveOutOf(const Loop& loop);
    /// True if the stored limits of the candidate keep it in this loop.
    [[nodiscard]] bool IsHeld(const Loop& loop, const Candidate& candidate) const;
    /// True if `code`, a candidate that `loop` always runs, can be hoisted out of the loop.
    [[nodiscard]] bool CanMove(const Loop& loop, int block, const SlcPtr<SlcICode>& code);
    /// Returns the number of entries of `writes` for the variable in the loop and its inner loops.
    template <class Variable>
    [[nodiscard]] static std::size_t WritesIn(const Loop& loop, const Writes<Variable>& writes,
                                              Variable variable);
    /// Tests the instruction last passed to `SlcDefUse`: true if the loop writes none of its
    /// numbered operands, except those whose definitions have been hoisted out of this loop.
    [[nodiscard]] bool OperandsAreInvariant(const Loop& loop);
    /// True if every read in the loop uses the value that `block` writes.
    [[nodiscard]] bool ReachesAllUses(const Loop& loop, int block, int variable) const;
    /// Returns the code hoisted before `head`, with the brackets of its runs.
    [[nodiscard]] std::deque<SlcPtr<SlcICode>> HoistedCodeBefore(int head) const;
    /// Warns only once per compilation, since the warning has no position in the source.
    static void WarnOfInfiniteLoop();

    const SlcControlFlowGraph& m_graph;
    SlcDataflowAnalysis& m_analysis;
    SlcDominators m_dominators;
    SlcLoopNest m_nest;
    Writes<int> m_writes;                         // sorted, like the next two
    Writes<const SlcLexType*> m_untrackedWrites;  // of variables without a number
    std::vector<User> m_users;
    std::vector<std::vector<Candidate>> m_candidates;  // by block
    std::unordered_map<int, std::vector<Candidate>>
        m_moved;  // by the head before which they are inserted
    std::unordered_set<const SlcICode*> m_hasMoved;
    std::unordered_set<int> m_movedVariables;  // written by code hoisted out of the current loop
    std::unordered_set<int> m_movedSomewhere;  // written by code hoisted out of any loop
};
