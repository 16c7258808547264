#pragma once

#include <string>
#include <vector>

#include "kernels/QxCode.h"
#include "sqx/SqxLayout.h"

/// An instruction during translation: the code, and the additional facts that passes need.
///
/// During translation `code.operands` is not set, since operands move: `first` and `code.count`
/// locate them. `code.target` is an index among the drafts, but see `jumps`.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;  // in the table of kernels; null for jumps, brackets, stop
    std::size_t first = 0;             // index of its first operand and letter in the block
    bool jumps = false;                // is a jump of the file; until the block is complete, its
                                       // target is the index of an instruction of the file
};

/// A block during translation. Passes drop, change and add drafts, and append operands; they do not
/// remove operands that are no longer used.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // per operand: r read, w written, m both

    /// Drops the drafts whose entry in `kept` is 0; `kept` has one entry per draft. Returns the new
    /// index for each old one, and for the end; a dropped draft gets the index of the next one that
    /// is kept. Adjusts targets in the same way. O(n).
    std::vector<std::uint32_t> Keep(const std::vector<char>& kept);
    /// Sets `copyFlag` of each condition to whether its brackets write their own flag. `variables`
    /// is the number of variables. Linear however deeply a file nests brackets.
    void MarkWrittenFlags(std::size_t variables);
};
