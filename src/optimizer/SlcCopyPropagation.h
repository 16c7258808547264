#pragma once

#include <vector>

#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcConstantTable.h"
#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"

/// Propagates known constants forward over the blocks and substitutes them for the variables that
/// instructions read. Only constants are propagated, not copies of variables.
///
/// If the condition of a jump or guard is constant, the caller drops the edge that control never
/// takes (`DropEdge`). Then skipped code makes no constant unknown, and need not be removed first.
///
/// At a join, where several edges that are not dropped enter a block, only bool constants on which
/// all of them agree stay known; at the head of a loop nothing is known. This keeps the pass sound
/// for varying control flow, where points that skip a guard may hold other values. The caller
/// passes instructions in order, one by one, so that folding can run in the same walk.
class SlcCopyPropagation : public SlcOperandWalker {
public:
    /// Both belong to the list to optimize. The pass keeps no reference to them.
    SlcCopyPropagation(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables);

    /// Starts a block; visit all blocks in code order, each between `EnterBlock` and `LeaveBlock`.
    void EnterBlock(const SlcBasicBlock& block);
    /// Substitutes known constants, in place, for the operands that an instruction reads, and
    /// records what it writes.
    void Propagate(const SlcPtr<SlcICode>& code);
    /// Saves the known values at the end of the block for later blocks.
    void LeaveBlock(const SlcBasicBlock& block);
    /// Ignores the edge from `block`, the current one, to `successor`; with -1, ignores no edge.
    void DropEdge(const SlcBasicBlock& block, int successor);
    /// For an instruction that dead code elimination may remove: true if it makes the operands that
    /// it reads unknown, so that removing it may make more values known.
    [[nodiscard]] static bool ForgetsReads(const SlcICode& code);
    /// True if an operand has been replaced.
    [[nodiscard]] bool HasChanged() const { return m_changed; }

private:
    /// The values known at one place in the code. Joins need only the bools, which are therefore
    /// kept separately.
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
    /// Records that `dest` has the value of `source`, if this is a constant and `dest` is a
    /// numbered variable, but no array, array reference or matrix.
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
