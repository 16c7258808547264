#pragma once

#include <string>
#include <vector>

#include "kernels/QxCode.h"
#include "sqx/SqxLayout.h"

/// An instruction during translation: the code, and the additional facts that passes need.
///
/// During translation `code.operands` is not set, since operands move: `first` and `code.count`
/// locate them. `code.target` is an index among the drafts.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;  // in the table of kernels; null for jumps and brackets
    std::size_t first = 0;             // index of its first operand and letter in the block
    bool jumps = false;                // is a jump of the file; until the block is complete, its
                                       // target is the index of an instruction of the file
};

/// A block during translation. Passes drop drafts and append operands; operands that are no longer
/// used are not removed.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // per operand, as in its layout: r read, w written, m both

    /// Drops the drafts whose entry in `kept` is 0; `kept` has one entry per draft. A jump to a
    /// dropped draft leads to the next one that is kept. Returns the new index for each old one,
    /// and for the end. O(n).
    std::vector<std::uint32_t> Keep(const std::vector<char>& kept);
    /// Sets `copyFlag` of the conditions whose brackets write their own flag. `variables` is the
    /// number of variables. O(n): a file may nest brackets deeply.
    void MarkWrittenFlags(std::size_t variables);
};
