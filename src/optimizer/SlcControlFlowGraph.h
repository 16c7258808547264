#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "icode/SlcListICode.h"
#include "optimizer/SlcBasicBlock.h"

/// The basic blocks of a list in code order, with their edges. The first block is the entry, the
/// last one the exit.
///
/// The list is the master copy of the code: after a pass has changed it, the graph is stale and
/// must be rebuilt, or updated if blocks and edges are the same as before. The brackets of a
/// parallel run do not start or end a block: the run counts as executed once, for all shading
/// points. Guards are branches, also within a run, since a point may skip the guarded code. The
/// head of a light loop is a separate block with an edge past the loop, since there may be no
/// lights.
class SlcControlFlowGraph {
public:
    /// Linear in the instructions. A jump to a label that is not in `list` is fatal. An empty list
    /// has no blocks. Uses the scratch number of the labels (`SlcLabelICode::m_place`).
    explicit SlcControlFlowGraph(const SlcListICode& list);
    SlcControlFlowGraph(const SlcControlFlowGraph&) = delete;
    SlcControlFlowGraph& operator=(const SlcControlFlowGraph&) = delete;

    /// Returns the blocks in code order, indexed by their ids.
    [[nodiscard]] const std::vector<SlcBasicBlock>& Blocks() const { return m_blocks; }
    /// Returns all instructions, in the order of the list.
    [[nodiscard]] const std::vector<SlcPtr<SlcICode>>& Codes() const { return m_icodes; }

    /// Removes the instructions at these positions of `Codes`, in ascending order. None of them may
    /// have the trait BeginsBlock or EndsBlock, since the edges stay. If a block would become
    /// empty, does nothing and returns false.
    [[nodiscard]] bool Remove(std::span<const std::size_t> places);
    /// Replaces the instruction at this position of `Codes`. Neither the old nor the new one may
    /// have the trait BeginsBlock or EndsBlock.
    void Replace(std::size_t place, SlcPtr<SlcICode> code) { m_icodes[place] = std::move(code); }

private:
    void AddEdge(SlcBasicBlock& from, int to);
    void FindSuccessors();
    void FindPredecessors();

    std::vector<SlcPtr<SlcICode>> m_icodes;  // of all blocks
    std::vector<SlcBasicBlock> m_blocks;     // ids are positions
    std::vector<int> m_predecessors;         // of all blocks, concatenated
};
