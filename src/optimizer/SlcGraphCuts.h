#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"

/// The places where the code of a graph falls in two: whatever runs in front of such a block comes
/// to it, by no other way than its front, and never comes back. The stretches between two cuts are
/// the statements at the top of a shader, so that a pass that looks only at the stretches where a
/// variable is named stays linear in long shaders.
class SlcGraphCuts {
public:
    /// Linear in the blocks.
    explicit SlcGraphCuts(const SlcControlFlowGraph& graph);

    /// The last cut that is not behind `block`; the entry counts as one.
    [[nodiscard]] int LastUpTo(int block) const { return m_lastUpTo[block]; }
    /// The first cut behind `block`; the end of the code counts as one.
    [[nodiscard]] int FirstBehind(int block) const { return m_firstBehind[block]; }

private:
    std::vector<int> m_lastUpTo;
    std::vector<int> m_firstBehind;
};
