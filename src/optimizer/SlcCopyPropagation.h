#pragma once

#include <vector>

#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcConstantTable.h"
#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"

/// Carries known constants forward over the blocks and puts them into the operands that read
/// them. Only constants are carried, never copies of one variable into another.
///
/// Jumps that the constants decide count as decided, so that a switch for code that is left out
/// costs no round of its own.
///
/// At a join only bool constants on which all paths agree stay known; the head of a loop starts
/// knowing nothing. A constant written under a guard thus never reaches the code behind it, and
/// that keeps the pass sound for varying control flow. Instructions are fed in order, one by one,
/// so that folding can run in the same walk.
class SlcCopyPropagation : public SlcOperandWalker {
public:
    /// Both must outlive the pass.
    SlcCopyPropagation(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables);

    /// Starts a block; blocks are taken in code order, each between `EnterBlock` and `LeaveBlock`.
    void EnterBlock(const SlcBasicBlock& block);
    /// Puts known constants into the operands that an instruction reads, and takes note of what
    /// it writes.
    void Propagate(const SlcPtr<SlcICode>& code);
    /// Keeps what is known here for the blocks behind.
    void LeaveBlock(const SlcBasicBlock& block);
    /// The block at hand goes on to that successor no more, so that nothing comes from there.
    void DropEdge(const SlcBasicBlock& block, int successor);
    /// An operand has been replaced.
    [[nodiscard]] bool HasChanged() const { return m_changed; }

private:
    /// What is known at one point. Joins look at the bools alone, so they stand apart.
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
    /// The destination holds the source's value from here on.
    void Learn(const SlcOperand& dest, const SlcOperand& source);

    /// The predecessors that control can come from, as far as is known by now.
    [[nodiscard]] std::vector<int> EnteringBlocks(const SlcBasicBlock& block) const;

    const SlcControlFlowGraph& m_graph;
    Known m_nothing;
    Known m_known;
    std::vector<Known> m_atEnd;       // of each block that has been left
    std::vector<int> m_droppedEdge;   // by block, the successor that it leaves for no more, or -1
    std::vector<bool> m_unreachable;  // nothing comes to the block
    bool m_keepVarying = false;       // varying operands may not become constants
    bool m_changed = false;
};
