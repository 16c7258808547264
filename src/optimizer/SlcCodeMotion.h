#pragma once

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDominators.h"
#include "optimizer/SlcLoopNest.h"

/// Hoists loop-invariant computations. Only plain computations move: calls, texture and light
/// instructions, flag operations and control flow stay.
///
/// Natural loops are found from the back edges to their heads. Hoisted code is placed before the
/// head's label, so that back edges skip it. A loop costs O(n log n) for the n instructions that
/// always run in it, so nested loops do not multiply the cost by their depth.
class SlcCodeMotion {
public:
    /// Both must belong to the list to optimize, and outlive the pass.
    SlcCodeMotion(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// Optimizes the loops of `list`. True if an instruction was moved; graph and analysis are then
    /// stale.
    [[nodiscard]] bool OptimizeLoops(SlcListICode& list);

private:
    using Loop = SlcLoopNest::Loop;
    /// An instruction whose class allows it to move. Its limits are stored, so that it is not
    /// tested for every enclosing loop: most candidates have an operand that the innermost loop
    /// changes, and cannot leave any loop.
    struct Candidate {
        SlcPtr<SlcICode> code;
        bool inParallelRun;
        int staysIn;   // place of the innermost loop with another write of its variable
        int waitsIn;   // place of the innermost loop that writes one of its operands
        int waitsFor;  // the number of that operand, whose definition may be hoisted first
    };
    /// A block that reads a variable. Sorted by variable, then by place of the innermost loop.
    struct User {
        int variable;
        int place;
        int block;
        // The check mistakes the comparison with zero for one with a null pointer.
        // NOLINTNEXTLINE(modernize-use-nullptr)
        auto operator<=>(const User&) const = default;
    };
    /// For each written variable, the places of the innermost loops around its writes.
    template <class Variable>
    using Writes = std::vector<std::pair<Variable, int>>;

    /// True if code before the head runs exactly when the loop is entered.
    [[nodiscard]] bool CanHoistBefore(int head) const;
    /// Collects what the loops write and read, and the candidates.
    void CollectFacts();
    /// Computes the limits of each candidate.
    void FindLimits();
    /// Returns the place of the innermost loop around `block` that writes `variable`. With `isOwn`,
    /// ignores one write directly in the innermost loop: the candidate itself.
    [[nodiscard]] int InnermostWriting(int block, int variable, bool isOwn) const;
    void CollectFactsOf(const SlcPtr<SlcICode>& code, int block, int place);
    /// Marks the instructions that can be hoisted out of `loop` as moved, and saves them for
    /// insertion before the head.
    void MoveOutOf(const Loop& loop);
    /// True if the stored limits of the candidate keep it in this loop.
    [[nodiscard]] bool IsHeld(const Loop& loop, const Candidate& candidate) const;
    /// The complete test whether `code`, which `loop` always runs, can be hoisted out of it.
    [[nodiscard]] bool CanMove(const Loop& loop, int block, const SlcPtr<SlcICode>& code);
    /// Returns the number of instructions of the loop that write the variable.
    template <class Variable>
    [[nodiscard]] static std::size_t WritesIn(const Loop& loop, const Writes<Variable>& writes,
                                              Variable variable);
    /// Tests the instruction whose def and use were computed last: true if the loop does not write
    /// its operands, or if their definitions have just been hoisted.
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
