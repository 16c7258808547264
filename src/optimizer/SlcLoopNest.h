#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDominators.h"

/// The natural loops of a graph and how they lie inside each other. A loop is all that reaches a
/// jump back to its head without passing the head, which dominates what jumps; jumps back to one
/// head make one loop. Blocks that nothing reaches are in none.
///
/// Each loop has a place, and those inside it the places behind it up to its `end`, so that a block
/// is in a loop if the place of its innermost loop lies between. About linear in the blocks and
/// edges, but that an edge costs as many loops as it leaves.
class SlcLoopNest {
public:
    struct Loop {
        int head = 0;
        int place = 0;
        int end = 0;
        /// The last block that every way out of the loop passes; -1 if there is no way out.
        int lastBeforeExits = -1;
    };
    static constexpr int k_none = -1;

    /// Both must outlive the nest.
    SlcLoopNest(const SlcControlFlowGraph& graph, const SlcDominators& dominators);

    /// In the code order of their heads.
    [[nodiscard]] const std::vector<Loop>& Loops() const { return m_loops; }
    /// Of the innermost loop around `block`; `k_none` outside of all.
    [[nodiscard]] int PlaceOf(int block) const;
    [[nodiscard]] bool Contains(const Loop& loop, int block) const;
    /// Of the innermost loop around `block` that also holds the one at `place`. Costs the loops
    /// between, each a comparison.
    [[nodiscard]] int CommonPlace(int block, int place) const;
    /// The blocks of a loop that every way out of it passes, all if there is none, in code order.
    /// Costs their number; in a loop without an exit that of all blocks of the graph.
    [[nodiscard]] std::vector<int> BlocksThatAlwaysRun(const Loop& loop) const;

private:
    void FindHeads();
    [[nodiscard]] bool IsHead(int block) const;
    void FindMembers();
    /// The blocks of a loop, with those inside it as one block each.
    void Gather(int loop);
    [[nodiscard]] int Outermost(int block);
    /// Gives each loop its place and its end, from outside to inside.
    void NumberPlaces();
    /// The last block in front of all exits of each loop.
    void FindExits();

    const SlcControlFlowGraph& m_graph;
    const SlcDominators& m_dominators;
    std::vector<Loop> m_loops;
    std::vector<int> m_fromOutside;  // loops, each in front of those inside it
    std::vector<int> m_parents;      // by loop
    std::vector<int> m_innermost;    // loop by block
    std::vector<int> m_gathered;  // by block, one nearer to the head of its outermost loop so far
};
