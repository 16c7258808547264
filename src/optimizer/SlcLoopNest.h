#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDominators.h"

/// The natural loops of a graph and their nesting. The head of a loop dominates all its blocks, and
/// the loop consists of the blocks that reach a back edge to the head without passing the head. All
/// back edges to one head belong to one loop. Unreachable blocks belong to no loop.
///
/// The place of a loop is its number in pre-order of the nesting: the loops inside it have the next
/// places, below its `end`. So a block is in a loop if the place of its innermost loop is in that
/// interval. About linear in the blocks and edges, plus the number of loops that each edge leaves.
class SlcLoopNest {
public:
    struct Loop {
        int head = 0;
        int place = 0;
        int end = 0;
        /// The last block that every path out of the loop passes; -1 if there is no exit.
        int lastBeforeExits = -1;
    };
    static constexpr int k_none = -1;

    /// Both must outlive this object.
    SlcLoopNest(const SlcControlFlowGraph& graph, const SlcDominators& dominators);

    /// Returns the loops in code order of their heads.
    [[nodiscard]] const std::vector<Loop>& Loops() const { return m_loops; }
    /// Returns the place of the innermost loop around `block`; `k_none` if there is none.
    [[nodiscard]] int PlaceOf(int block) const;
    [[nodiscard]] bool Contains(const Loop& loop, int block) const;
    /// Returns the place of the innermost loop around `block` that is the loop at `place` or
    /// contains it; `k_none` if there is none. Costs one comparison for each loop in between.
    [[nodiscard]] int CommonPlace(int block, int place) const;
    /// Returns the blocks that every path out of the loop passes, or all its blocks if it has no
    /// exit, in code order. Linear in the number of returned blocks; for a loop without an exit,
    /// linear in the blocks of the graph.
    [[nodiscard]] std::vector<int> BlocksThatAlwaysRun(const Loop& loop) const;

private:
    void FindHeads();
    [[nodiscard]] bool IsHead(int block) const;
    void FindMembers();
    /// Collects the blocks of a loop, counting each inner loop as one block.
    void Gather(int loop);
    [[nodiscard]] int Outermost(int block);
    /// Assigns each loop its place and its end, from the outside to the inside.
    void NumberPlaces();
    /// Finds the last block before all exits of each loop.
    void FindExits();

    const SlcControlFlowGraph& m_graph;
    const SlcDominators& m_dominators;
    std::vector<Loop> m_loops;
    std::vector<int> m_fromOutside;  // loops, each before its inner loops
    std::vector<int> m_parents;      // by loop
    std::vector<int> m_innermost;    // loop by block
    std::vector<int> m_gathered;  // union-find, by block: the next block on the way to the head of
                                  // its outermost loop so far
};
