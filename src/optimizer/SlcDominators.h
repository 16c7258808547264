#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"

/// Which blocks every path from the entry to a block passes.
///
/// Keith Cooper, Timothy Harvey and Ken Kennedy, "A simple, fast dominance algorithm", 2001; a
/// query compares the places of two blocks in a walk over the dominator tree.
class SlcDominators {
public:
    /// About linear in blocks and edges where all loops are natural ones, as in the code of
    /// shaders. The graph is not needed afterwards.
    explicit SlcDominators(const SlcControlFlowGraph& graph);

    /// Every path to `block` passes `dominator`; true for a block and itself, false for blocks
    /// that nothing reaches. O(1).
    [[nodiscard]] bool Dominates(int dominator, int block) const;
    /// Of a block in an order in which its dominators come before it; -1 if nothing reaches it.
    [[nodiscard]] int Place(int block) const { return m_place[block]; }
    /// The last dominator of a block that the entry reaches, but for itself.
    [[nodiscard]] int Parent(int block) const { return m_immediate[block]; }
    /// The last block that dominates both, which the entry must reach. Costs the length of the two
    /// ways through the tree to it.
    [[nodiscard]] int NearestCommon(int first, int second) const;

private:
    void OrderBlocks(const SlcControlFlowGraph& graph);
    void FindImmediateDominators(const SlcControlFlowGraph& graph);
    void NumberTree();

    std::vector<int> m_forwardOrder;  // reverse post-order of the blocks that the entry reaches
    std::vector<int> m_place;         // of each block in that order; -1 for what is not reached
    std::vector<int> m_immediate;     // dominator of each block; -1 for none
    std::vector<int> m_enter;         // of each block in the walk over the tree
    std::vector<int> m_leave;
};
