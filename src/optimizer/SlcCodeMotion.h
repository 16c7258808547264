#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "optimizer/SlcDominators.h"

/// Moves computations that do not depend on a loop in front of it. Only plain computations move:
/// calls, texture and light instructions, flag operations and control stay.
///
/// A natural loop is found from the jumps back to its head. What moves runs once, in front of the
/// head's label, so that the jumps back pass it by. Each loop costs its size, so that nested
/// loops cost their depth.
class SlcCodeMotion {
public:
    /// Both belong to the list that is to be optimized, and must outlive the pass.
    SlcCodeMotion(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// Treats the loops of `list` as they stand; true if something moved. Graph and analysis are
    /// stale then.
    [[nodiscard]] bool OptimizeLoops(SlcListICode& list);

private:
    /// A loop with its facts.
    struct Loop {
        int head = 0;
        std::vector<int> blocks;              // in code order
        std::vector<int> exits;               // blocks with a successor outside
        std::unordered_map<int, int> writes;  // by variable, how many instructions write it
        std::unordered_map<int, std::vector<int>> usingBlocks;  // by variable
        std::unordered_set<const SlcLexType*> untracked;        // written, though no set follows it
    };
    /// An instruction that leaves its loop.
    struct Moved {
        SlcPtr<SlcICode> code;
        bool inParallelRun;
    };

    /// The blocks that jump back to `head`, which leads a loop; empty for any other block.
    [[nodiscard]] std::vector<int> LatchesOf(int head) const;
    /// The loop has a place in front of it.
    [[nodiscard]] bool IsEnteredFromFront(int head) const;
    /// Without the facts on its variables.
    [[nodiscard]] Loop BuildLoop(int head, const std::vector<int>& latches);
    void CollectFacts(Loop& loop);
    void MoveOutOf(const Loop& loop);
    [[nodiscard]] bool CanMove(const Loop& loop, int block, std::size_t place);
    [[nodiscard]] bool OperandsAreInvariant(const Loop& loop);
    [[nodiscard]] bool ReachesAllUses(const Loop& loop, int block, int variable) const;
    [[nodiscard]] std::deque<SlcPtr<SlcICode>> InFrontOf(int head) const;
    static void WarnOfInfiniteLoop();

    const SlcControlFlowGraph& m_graph;
    SlcDataflowAnalysis& m_analysis;
    SlcDominators m_dominators;
    std::unordered_map<int, std::vector<Moved>> m_moved;  // by the head in front of which they go
    std::unordered_set<const SlcICode*> m_hasMoved;
    std::unordered_set<int> m_movedVariables;  // written by what has left the loop at hand
};
