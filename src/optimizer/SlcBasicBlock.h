#pragma once

#include <array>
#include <iosfwd>
#include <span>

#include "icode/SlcICode.h"

/// A stretch of instructions that is entered only at its first and left only at its last one. It
/// holds the very instructions of the list, in code order, and so does not outlive the graph.
class SlcBasicBlock {
public:
    /// `codes`: of the graph that the block belongs to.
    SlcBasicBlock(int id, std::span<const SlcPtr<SlcICode>> codes) : m_id(id), m_icodes(codes) {}

    /// Place of the block in code order, from 0.
    [[nodiscard]] int GetBlockId() const { return m_id; }
    [[nodiscard]] std::span<const SlcPtr<SlcICode>> GetListICode() const { return m_icodes; }

    /// Ids, none twice, in the order in which the edges were added: of predecessors, the code
    /// order; of successors, what follows in the code comes first, but for a conditional jump,
    /// which comes in front of it.
    [[nodiscard]] std::span<const int> GetPredBlocks() const { return m_predecessors; }
    [[nodiscard]] std::span<const int> GetNextBlocks() const
    {
        return std::span(m_successors).first(m_successorCount);
    }

    /// Id, edges and the class name of each instruction, as text.
    void Print(std::ostream& out) const;

private:
    friend class SlcControlFlowGraph;

    int m_id;
    std::span<const SlcPtr<SlcICode>> m_icodes;
    std::span<const int> m_predecessors;  // in a list of the graph
    std::array<int, 2> m_successors = {};
    std::size_t m_successorCount = 0;
};
