#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"

/// The cuts of a graph: blocks that every path from an earlier block to the end of the code passes,
/// and from which no path leads back to an earlier block. The first block counts as a cut; a block
/// after one that cannot reach the end of the code does not.
///
/// The code between consecutive cuts contains about one top-level condition or loop of a shader. So
/// a pass that visits, for each variable, only the code between the cuts around its mentions stays
/// linear in long shaders.
class SlcGraphCuts {
public:
    /// Linear in the blocks. The graph is not needed afterwards.
    explicit SlcGraphCuts(const SlcControlFlowGraph& graph);

    /// Returns the last cut at or before `block`.
    [[nodiscard]] int LastUpTo(int block) const { return m_lastUpTo[block]; }
    /// Returns the first cut after `block`; the number of blocks if there is none.
    [[nodiscard]] int FirstAfter(int block) const { return m_firstAfter[block]; }

private:
    std::vector<int> m_lastUpTo;
    std::vector<int> m_firstAfter;
};
