#pragma once

#include <string>
#include <vector>

#include "kernels/QxCode.h"

/// An instruction while a block is translated: what the passes over it need beyond the code.
///
/// Until the translation ends, `code.operands` is not set, since operands move: they are found by
/// `first` and `code.count`. `code.target` is an index among the drafts.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;  // of the table of kernels; null for jumps and brackets
    std::size_t first = 0;  // place of its operands in those of the block, and of their letters
    bool jumps = false;     // until the block is whole: the target is an instruction of the file
};

/// A block while it is translated. Passes drop drafts and add operands at the end; operands that
/// no draft refers to any more stay where they are.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // of the operands: r read, w written, m both

    /// Drops the drafts whose entry in `kept` is 0; there is an entry for each. A jump to one of
    /// them leads to the next that is kept. Gives the new index for each old one, and behind them
    /// that of the end. O(n).
    std::vector<std::uint32_t> Keep(const std::vector<char>& kept);
};

/// Whether an instruction changes an operand, by the letter of its place in the layout.
inline bool QxIsWritten(char letter)
{
    return letter == 'w' || letter == 'm';
}
