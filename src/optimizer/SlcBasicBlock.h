#pragma once

#include <array>
#include <span>

#include "icode/SlcICode.h"
#include "support/SlcText.h"

/// A sequence of instructions in code order that is entered only at the first instruction and left
/// only at the last one. A block refers to the instructions of its graph and must not outlive it.
class SlcBasicBlock {
public:
    /// `codes` are instructions of the graph that the block belongs to.
    SlcBasicBlock(int id, std::span<const SlcPtr<SlcICode>> codes) : m_id(id), m_icodes(codes) {}

    /// Position of the block in code order, from 0.
    [[nodiscard]] int GetBlockId() const { return m_id; }
    /// Returns the instructions, at least one, in code order.
    [[nodiscard]] std::span<const SlcPtr<SlcICode>> GetListICode() const { return m_icodes; }

    /// Return ids without duplicates. Predecessors are in code order. Among successors, the block
    /// after this one in code order comes first, except that the target of a conditional goto
    /// precedes it.
    [[nodiscard]] std::span<const int> GetPredBlocks() const { return m_predecessors; }
    [[nodiscard]] std::span<const int> GetNextBlocks() const
    {
        return std::span(m_successors).first(m_successorCount);
    }

    /// Prints id, edges and the class name of each instruction.
    void Print(SlcText& out) const;

private:
    friend class SlcControlFlowGraph;

    int m_id;
    std::span<const SlcPtr<SlcICode>> m_icodes;
    std::span<const int> m_predecessors;  // in a list owned by the graph
    std::array<int, 2> m_successors = {};
    std::size_t m_successorCount = 0;
};
