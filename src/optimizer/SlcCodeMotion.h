#pragma once

#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDominators.h"
#include "optimizer/SlcLoopNest.h"

/// Moves computations that do not depend on a loop in front of it. Only plain computations move:
/// calls, texture and light instructions, flag operations and control stay.
///
/// A natural loop is found from the jumps back to its head. What moves runs once, in front of the
/// head's label, so that the jumps back pass it by. Each loop costs the part of it that always
/// runs, with a logarithm, so that nested loops do not cost their depth.
class SlcCodeMotion {
public:
    /// Both belong to the list that is to be optimized, and must outlive the pass.
    SlcCodeMotion(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// Treats the loops of `list` as they stand; true if something moved. Graph and analysis are
    /// stale then.
    [[nodiscard]] bool OptimizeLoops(SlcListICode& list);

private:
    using Loop = SlcLoopNest::Loop;
    /// An instruction that may move as far as it alone can tell. It is not looked at for each loop
    /// around it: most have an operand that the innermost changes, and so leave none.
    struct Candidate {
        SlcPtr<SlcICode> code;
        bool inParallelRun;
        int staysIn;   // place of the innermost loop that writes its variable elsewhere too
        int waitsIn;   // of the innermost loop that writes one of its operands
        int waitsFor;  // that operand, which may leave that loop before it
    };
    /// A block that reads a variable, by the place of its innermost loop.
    struct User {
        int variable;
        int place;
        int block;
        // The check takes the comparison with zero for one with null.
        // NOLINTNEXTLINE(modernize-use-nullptr)
        auto operator<=>(const User&) const = default;
    };
    /// By what is written, the place of the innermost loop around an instruction that writes it.
    template <class Variable>
    using Writes = std::vector<std::pair<Variable, int>>;

    /// The loop has a place in front of it.
    [[nodiscard]] bool IsEnteredFromFront(int head) const;
    /// What the loops write and read, and what in them may move at all.
    void CollectFacts();
    /// Fills in where each candidate stays and waits.
    void FindLimits();
    /// The place of the innermost loop around `block` with a write of `variable`, but for one
    /// directly in the innermost if `isOwn`.
    [[nodiscard]] int InnermostWriting(int block, int variable, bool isOwn) const;
    void CollectFactsOf(const SlcPtr<SlcICode>& code, int block, int place);
    /// Takes what may leave `loop` out of the code, and keeps it for the front of the head.
    void MoveOutOf(const Loop& loop);
    /// The candidate cannot leave this loop, by what is known of it without another look.
    [[nodiscard]] bool IsHeld(const Loop& loop, const Candidate& candidate) const;
    /// The whole test, for a loop that `code` always runs in.
    [[nodiscard]] bool CanMove(const Loop& loop, int block, const SlcPtr<SlcICode>& code);
    /// How many instructions of the loop write the variable.
    template <class Variable>
    [[nodiscard]] static std::size_t WritesIn(const Loop& loop, const Writes<Variable>& writes,
                                              Variable variable);
    /// Of the instruction last computed: the loop writes none of what it reads, or what wrote it
    /// has just moved.
    [[nodiscard]] bool OperandsAreInvariant(const Loop& loop);
    /// Each read in the loop wants the value that `block` writes.
    [[nodiscard]] bool ReachesAllUses(const Loop& loop, int block, int variable) const;
    /// What has moved to the front of `head`, with the brackets of its runs.
    [[nodiscard]] std::deque<SlcPtr<SlcICode>> InFrontOf(int head) const;
    /// Once in a process: without a place in the source one says as much as many.
    static void WarnOfInfiniteLoop();

    const SlcControlFlowGraph& m_graph;
    SlcDataflowAnalysis& m_analysis;
    SlcDominators m_dominators;
    SlcLoopNest m_nest;
    Writes<int> m_writes;                         // sorted, as are the next two
    Writes<const SlcLexType*> m_untrackedWrites;  // of what no set follows
    std::vector<User> m_users;
    std::vector<std::vector<Candidate>> m_candidates;  // by block
    std::unordered_map<int, std::vector<Candidate>>
        m_moved;  // by the head in front of which they go
    std::unordered_set<const SlcICode*> m_hasMoved;
    std::unordered_set<int> m_movedVariables;  // written by what has left the loop at hand
    std::unordered_set<int> m_movedSomewhere;  // and any loop
};
