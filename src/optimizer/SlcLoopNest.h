#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDominators.h"

/// The natural loops of a graph and their nesting. A back edge leads to the same or an earlier
/// block in code order. A loop consists of its head and of the blocks that reach a back edge to the
/// head without passing the head, which dominates them all. All back edges to one head belong to
/// one loop; if the head does not dominate the source of one of them, there is no loop. Unreachable
/// blocks belong to no loop.
///
/// The place of a loop is its number in pre-order of the nesting: the loops inside it have the next
/// places, below its `end`. So a block is in a loop if the place of the block's innermost loop is
/// at least the `place` of the loop and less than its `end`.
class SlcLoopNest {
public:
    struct Loop {
        int head = 0;
        int place = 0;
        int end = 0;  // one more than the last place of the loops inside it
        /// The last block that every path out of the loop passes; -1 if there is no exit.
        int lastBeforeExits = -1;
    };
    static constexpr int k_none = -1;

    /// `graph` and its `dominators` must outlive this object. About linear in the blocks and edges,
    /// plus, for each loop that an edge leaves, a walk up the dominator tree.
    SlcLoopNest(const SlcControlFlowGraph& graph, const SlcDominators& dominators);

    /// Returns the loops in code order of their heads.
    [[nodiscard]] const std::vector<Loop>& Loops() const { return m_loops; }
    /// Returns the place of the innermost loop around `block`; `k_none` if there is none.
    [[nodiscard]] int PlaceOf(int block) const;
    /// True if the block is in the loop, or in a loop inside it.
    [[nodiscard]] bool Contains(const Loop& loop, int block) const;
    /// Returns the place of the innermost loop around `block` that is the loop at `place` or
    /// contains it; `k_none` if there is none. Costs one step for each loop around `block`, from
    /// the innermost to the result.
    [[nodiscard]] int CommonPlace(int block, int place) const;
    /// Returns the blocks that every path out of the loop passes, or all its blocks if it has no
    /// exit, in code order. Linear in the number of returned blocks, or n log n if code jumps
    /// backward within the loop; for a loop without an exit, linear in the blocks of the graph.
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
    /// Finds `lastBeforeExits` of each loop.
    void FindExits();

    const SlcControlFlowGraph& m_graph;
    const SlcDominators& m_dominators;
    std::vector<Loop> m_loops;
    std::vector<int> m_fromOutside;  // loops, each before its inner loops
    std::vector<int> m_parents;      // by loop: the loop around it, or k_none
    std::vector<int> m_innermost;    // by block: the innermost loop around it, or k_none
    std::vector<int> m_gathered;  // union-find, by block: the next block on the way to the head of
                                  // its outermost loop so far
};
