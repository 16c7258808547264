#pragma once

#include <string>
#include <vector>

#include "kernels/QxCode.h"

/// An instruction while a block is translated: what the passes over it need beyond the code.
struct QxDraft {
    QxCode code;
    const QxKernelRow* row = nullptr;
    std::size_t first = 0;  // place of its operands in those of the block, and of their letters
    bool jumps = false;     // to an instruction of the file
};

/// A block while it is translated.
struct QxDraftBlock {
    std::vector<QxDraft> drafts;
    std::vector<QxOperand> operands;
    std::string letters;  // of the operands: r read, w written, m both

    /// Drops the other drafts. A jump to one of them leads to the next that is kept. Gives the new
    /// index for each old one.
    std::vector<std::uint32_t> Keep(const std::vector<char>& kept);
};

/// By the letter of its place in the layout.
inline bool QxIsWritten(char letter)
{
    return letter == 'w' || letter == 'm';
}
