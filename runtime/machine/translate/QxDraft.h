#pragma once

#include <string>
#include <vector>

#include "kernels/QxCode.h"

/// An instruction during translation: the code, and the additional facts that passes need.
///
/// During translation `code.operands` is not set, since operands move: `first` and `code.count`
/// locate them. `code.target` is an index among the drafts.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;  // in the table of kernels; null for jumps and brackets
    std::size_t first = 0;             // index of its first operand and letter in the block
    bool jumps = false;  // until the block is complete: the target is the index of an
                         // instruction of the file
};

/// A block during translation. Passes drop drafts and append operands; operands that are no longer
/// used are not removed.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // per operand: r read, w written, m both

    /// Drops the drafts whose entry in `kept` is 0; `kept` has one entry per draft. A jump to a
    /// dropped draft leads to the next one that is kept. Returns the new index for each old one,
    /// and for the end. O(n).
    std::vector<std::uint32_t> Keep(const std::vector<char>& kept);
};

/// True if an instruction writes an operand with this letter of the layout.
inline bool QxIsWritten(char letter)
{
    return letter == 'w' || letter == 'm';
}

/// True for the start of conditional brackets, which run only for points whose flag is true, or for
/// `IfFalse` false.
inline bool QxIsCondition(QxCodeStep step)
{
    return step == QxCodeStep::IfTrue || step == QxCodeStep::IfFalse;
}

inline bool QxIsConditionalJump(QxCodeStep step)
{
    return step == QxCodeStep::GotoIfTrue || step == QxCodeStep::GotoIfFalse;
}

inline bool QxIsGoto(QxCodeStep step)
{
    return step == QxCodeStep::Goto || QxIsConditionalJump(step);
}

/// True if the next step may be `target`: a goto, or the start or end of a loop over lights.
inline bool QxIsJump(QxCodeStep step)
{
    return QxIsGoto(step) || step == QxCodeStep::BeginLights || step == QxCodeStep::EndLights;
}
