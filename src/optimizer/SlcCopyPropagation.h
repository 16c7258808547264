#pragma once

#include <vector>

#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcConstantTable.h"
#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"

/// Propagates known constants forward over the blocks and substitutes them for the operands that
/// read them. Only constants are propagated, not copies of variables.
///
/// Jumps that the constants decide count as decided, so that skipping code by a constant switch
/// does not need another round.
///
/// At a join only bool constants on which all paths agree stay known; at the head of a loop nothing
/// is known. So a constant written under a guard is not known after it, which keeps the pass sound
/// for varying control flow. Instructions are passed in order, one by one, so that folding can run
/// in the same walk.
class SlcCopyPropagation : public SlcOperandWalker {
public:
    /// Both must outlive the pass.
    SlcCopyPropagation(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables);

    /// Starts a block; blocks are taken in code order, each between `EnterBlock` and `LeaveBlock`.
    void EnterBlock(const SlcBasicBlock& block);
    /// Substitutes known constants for the operands that an instruction reads, and records what it
    /// writes.
    void Propagate(const SlcPtr<SlcICode>& code);
    /// Saves what is known here for later blocks.
    void LeaveBlock(const SlcBasicBlock& block);
    /// Removes the edge from the current block to that successor.
    void DropEdge(const SlcBasicBlock& block, int successor);
    /// The instruction makes unknown what it reads, so that without it more may be known.
    [[nodiscard]] static bool ForgetsReads(const SlcICode& code);
    /// True if an operand has been replaced.
    [[nodiscard]] bool HasChanged() const { return m_changed; }

private:
    /// The known values at one point. Joins need only the bools, so they are kept separately.
    struct Known {
        SlcConstantTable bools;
        SlcConstantTable others;  // of every other type
    };

    void Read(SlcOperand& operand) override;
    void Write(SlcOperand& operand) override;

    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override;
    void Case(SlcPtr<SlcUnaryMinusICode> code) override;
    void Case(SlcPtr<SlcSetUniformBoolFlagICode> code) override;
    void Case(SlcPtr<SlcInvertBoolFlagICode> code) override;
    void Case(SlcPtr<SlcOrBoolFlagICode> code) override;
    void Case(SlcPtr<SlcCallICode> code) override;
    void Case(SlcPtr<SlcCallDSOICode> code) override;
    void Case(SlcPtr<SlcConvertArrayDSOICode> code) override;

    /// The constant that a variable holds, or null.
    [[nodiscard]] SlcOperand Find(const SlcOperand& operand) const;
    /// The same for a flag, which may be a constant itself.
    [[nodiscard]] SlcOperand FindBool(const SlcOperand& operand) const;
    /// Records that the destination has the source's value.
    void Learn(const SlcOperand& dest, const SlcOperand& source);

    /// The predecessor can still reach the block, as far as is known.
    [[nodiscard]] bool Enters(int predecessor, int block) const;

    Known m_nothing;
    Known m_known;
    std::vector<Known> m_atEnd;       // of each block that has been left
    std::vector<int> m_droppedEdge;   // by block, the successor whose edge was dropped, or -1
    std::vector<bool> m_unreachable;  // by block: it cannot be reached
    bool m_keepVarying = false;       // varying operands may not become constants
    bool m_changed = false;
};
