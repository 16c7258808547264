#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>

#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// Gives equal constants of a code block one operand, so that the byte-code file lists each value
/// once. Runs just before the writer numbers the variables.
///
/// The order of the constants depends on their values alone, not on the order of use.
class SlcCollectConst : private SlcOperandWalker {
public:
    /// Rewrites the reads of `list` and fills `constants` with what they share.
    void Collect(SlcPtr<SlcListICode>& list, std::deque<SlcOperand>& constants);
    /// The same for a group of parameter initializers and the operands that hold their values; a
    /// value may be a constant itself. `lists` and `defaults` go in step.
    void CollectInit(std::deque<SlcPtr<SlcListICode>>& lists,
                     std::deque<std::deque<SlcOperand>>& defaults,
                     std::deque<SlcOperand>& constants);

private:
    void Read(SlcOperand& operand) override { operand = ReplaceConst(operand); }
    void Write(SlcOperand&) override {}

    [[nodiscard]] SlcOperand ReplaceConst(const SlcOperand& operand);
    [[nodiscard]] SlcOperand ReplaceFloat(const SlcOperand& operand);
    void Clear();
    void Walk(const SlcListICode& list);
    void Append(std::deque<SlcOperand>& constants) const;

    // By the bits in single precision, which is what the renderer computes with: of two constants
    // that differ beyond it, the first one met is written.
    std::map<std::uint32_t, SlcOperand> m_floats;
    std::map<std::string, SlcOperand> m_strings;
    std::map<int, SlcOperand> m_ints;
    SlcOperand m_true;
    SlcOperand m_false;
};
