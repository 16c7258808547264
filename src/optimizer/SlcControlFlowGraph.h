#pragma once

#include <vector>

#include "icode/SlcListICode.h"
#include "optimizer/SlcBasicBlock.h"

/// The basic blocks of a list in code order, with their edges. The first block is the entry, the
/// last one the exit.
///
/// The list stays the master copy of the code: after a pass has changed it the graph is stale and
/// is built anew. A parallel run is straight-line code here, in which one pass stands for all
/// shading points; its brackets start and end no block. Guards are branches, since a point may
/// skip the code under them. The head of a light loop is a block of its own with an edge past the
/// loop, which may run for no light at all.
class SlcControlFlowGraph {
public:
    /// Linear in the instructions, but for the look-up of labels. A jump to a label that is not in
    /// `list` is fatal. An empty list has no blocks.
    explicit SlcControlFlowGraph(const SlcListICode& list);
    SlcControlFlowGraph(const SlcControlFlowGraph&) = delete;
    SlcControlFlowGraph& operator=(const SlcControlFlowGraph&) = delete;

    /// In code order, by their ids.
    [[nodiscard]] const std::vector<SlcBasicBlock>& Blocks() const { return m_blocks; }

private:
    void AddEdge(SlcBasicBlock& from, int to);
    void FindSuccessors();
    void FindPredecessors();

    std::vector<SlcPtr<SlcICode>> m_icodes;  // of all blocks
    std::vector<SlcBasicBlock> m_blocks;     // ids are positions
    std::vector<int> m_predecessors;         // of all blocks, one behind the other
};
