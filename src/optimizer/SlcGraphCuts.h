#pragma once

#include <vector>

#include "optimizer/SlcControlFlowGraph.h"

/// The cuts of a graph: blocks that separate the code into two parts, such that every path from the
/// first part enters the second at the start of the block and never returns. The sections between
/// two cuts are the top-level statements of a shader, so a pass that visits only the sections where
/// a variable is named stays linear in long shaders.
class SlcGraphCuts {
public:
    /// Linear in the blocks.
    explicit SlcGraphCuts(const SlcControlFlowGraph& graph);

    /// Returns the last cut at or before `block`; the entry counts as a cut.
    [[nodiscard]] int LastUpTo(int block) const { return m_lastUpTo[block]; }
    /// Returns the first cut after `block`; the end of the code counts as a cut.
    [[nodiscard]] int FirstAfter(int block) const { return m_firstAfter[block]; }

private:
    std::vector<int> m_lastUpTo;
    std::vector<int> m_firstAfter;
};
