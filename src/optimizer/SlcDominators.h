#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"

/// The dominators of blocks: block a dominates b if every path from the entry to b passes a.
///
/// Keith Cooper, Timothy Harvey and Ken Kennedy, "A simple, fast dominance algorithm", 2001; a
/// query compares the positions of two blocks in a walk over the dominator tree.
class SlcDominators {
public:
    /// The iteration visits the blocks and edges twice if all loops are natural loops, as in the
    /// code of shaders. The graph is not needed afterwards.
    explicit SlcDominators(const SlcControlFlowGraph& graph);

    /// True if every path from the entry to `block` passes `dominator`; a block dominates itself.
    /// False if one of them is unreachable. O(1).
    [[nodiscard]] bool Dominates(int dominator, int block) const;
    /// Returns the position of a block in an order in which its dominators precede it; -1 if it is
    /// unreachable.
    [[nodiscard]] int Place(int block) const { return m_place[block]; }
    /// Returns the immediate dominator of a block; the entry is its own, and -1 stands for that of
    /// an unreachable block.
    [[nodiscard]] int Parent(int block) const { return m_immediate[block]; }
    /// Returns the nearest common dominator of two reachable blocks. Linear in the lengths of the
    /// two tree paths from the blocks to that dominator.
    [[nodiscard]] int NearestCommon(int first, int second) const;

private:
    void OrderBlocks(const SlcControlFlowGraph& graph);
    void FindImmediateDominators(const SlcControlFlowGraph& graph);
    void NumberTree();

    std::vector<int> m_forwardOrder;  // reverse post-order of the reachable blocks
    std::vector<int> m_place;         // position of each block in that order; -1 if unreachable
    std::vector<int> m_immediate;     // immediate dominator of each block; -1 if unreachable
    std::vector<int> m_enter;         // time at which the walk over the tree enters each block
    std::vector<int> m_leave;         // time at which it leaves each block
};
