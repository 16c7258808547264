#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <string>

#include "icode/SlcListICode.h"
#include "icode/SlcOperandWalker.h"

/// Makes equal constants of a code block, or of a group of initializers, share one operand, so that
/// the section of the byte-code file that declares them contains each once. Runs before the writer
/// numbers the constants.
///
/// The order of the constants depends only on their values, not on the order of use.
class SlcCollectConst : private SlcOperandWalker {
public:
    /// Replaces the constants that `list` reads by shared operands, and returns these in
    /// `constants`.
    void Collect(SlcPtr<SlcListICode>& list, std::deque<SlcOperand>& constants);
    /// Does the same for a group of parameter initializers, `lists`, and the operands that hold
    /// their values, `defaults`, which may themselves be constants.
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

    // Keyed by the single-precision bits, which the renderer computes with. If two constants differ
    // only beyond that, the first one found is written.
    std::map<std::uint32_t, SlcOperand> m_floats;
    std::map<std::string, SlcOperand> m_strings;
    std::map<int, SlcOperand> m_ints;
    SlcOperand m_true;
    SlcOperand m_false;
};
