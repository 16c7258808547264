#pragma once

#include <vector>

#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcConstantTable.h"
#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"

/// Propagates known constants forward over the blocks and substitutes them for the variables that
/// instructions read. Only constants are propagated, not copies of variables.
///
/// A jump on a known constant is followed only to the target that it will take, so code that a
/// constant condition skips needs no additional round.
///
/// At a join only bool constants on which all paths agree stay known; at the head of a loop nothing
/// is known. So a constant written under a guard is not known after the guard, which keeps the pass
/// sound for varying control flow. The caller passes instructions in order, one by one, so that
/// folding can run in the same walk.
class SlcCopyPropagation : public SlcOperandWalker {
public:
    /// Both must outlive the pass.
    SlcCopyPropagation(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables);

    /// Starts a block; visit blocks in code order, each between `EnterBlock` and `LeaveBlock`.
    void EnterBlock(const SlcBasicBlock& block);
    /// Substitutes known constants for the operands that an instruction reads, and records what it
    /// writes.
    void Propagate(const SlcPtr<SlcICode>& code);
    /// Saves the known values at the end of the block for later blocks.
    void LeaveBlock(const SlcBasicBlock& block);
    /// Ignores the edge from `block`, the current one, to `successor`; with -1, ignores no edge.
    void DropEdge(const SlcBasicBlock& block, int successor);
    /// True if the instruction makes the operands that it reads unknown, so that removing it may
    /// make more values known.
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

    /// Returns the constant that a variable holds, or null.
    [[nodiscard]] SlcOperand Find(const SlcOperand& operand) const;
    /// Does the same for a flag, which may itself be a constant.
    [[nodiscard]] SlcOperand FindBool(const SlcOperand& operand) const;
    /// Records that `dest` has the value of `source`, if `source` is a constant to propagate.
    void Learn(const SlcOperand& dest, const SlcOperand& source);

    /// True if control may enter the block from the predecessor, as far as known.
    [[nodiscard]] bool Enters(int predecessor, int block) const;

    Known m_nothing;
    Known m_known;
    std::vector<Known> m_atEnd;       // of each block that has been left
    std::vector<int> m_droppedEdge;   // by block: the successor whose edge was dropped, or -1
    std::vector<bool> m_unreachable;  // by block
    bool m_keepVarying = false;       // do not replace varying operands by constants
    bool m_changed = false;
};
