#pragma once

#include <iosfwd>
#include <vector>

#include "icode/SlcICode.h"

/// A stretch of instructions that is entered only at its first and left only at its last one.
/// It holds the very instructions of the list, in code order.
class SlcBasicBlock {
public:
    explicit SlcBasicBlock(int id) : m_id(id) {}

    /// Place of the block in code order, from 0.
    [[nodiscard]] int GetBlockId() const { return m_id; }
    void AddICode(SlcPtr<SlcICode> code) { m_icodes.push_back(std::move(code)); }
    /// Passes may change it in place.
    [[nodiscard]] std::vector<SlcPtr<SlcICode>>& GetListICode() { return m_icodes; }
    [[nodiscard]] const std::vector<SlcPtr<SlcICode>>& GetListICode() const { return m_icodes; }
    [[nodiscard]] bool IsEmpty() const { return m_icodes.empty(); }

    /// Ids, none twice, in the order in which the edges were added.
    [[nodiscard]] const std::vector<int>& GetPredBlocks() const { return m_predecessors; }
    [[nodiscard]] const std::vector<int>& GetNextBlocks() const { return m_successors; }

    /// Id, edges and the class name of each instruction, as text.
    void Print(std::ostream& out) const;

private:
    friend class SlcControlFlowGraph;

    int m_id;
    std::vector<SlcPtr<SlcICode>> m_icodes;
    std::vector<int> m_predecessors;
    std::vector<int> m_successors;
};
