#pragma once

#include <cstddef>
#include <vector>

#include "machine/verify/QxUntrustedBlock.h"

/// The brackets of a block: loops over lights, parallel runs and conditions. The constructor takes
/// O(n log n) for n instructions, plus the loops over lights around each jump, up to the one that
/// contains its target; queries take constant time.
class QxBrackets {
public:
    /// One pair of brackets, or the whole block with the default values.
    struct Bracket {
        SqxPrimitive begin = SqxPrimitive::BEGIN_PARALLEL;
        std::size_t first = 0;   // index of the opening instruction
        std::size_t last = 0;    // index of the closing instruction
        std::size_t parent = 0;  // number of the enclosing bracket, in order of starts
        std::size_t depth = 0;   // 1 for outermost brackets
        bool parallel = false;   // is a parallel run, or is inside one
    };

    /// Throws `QxRefused` if brackets do not nest, or are nested more deeply than
    /// `QxVerifier::k_deepestNesting`; if the start and the end of a loop over lights do not refer
    /// to each other; or if a jump enters a bracket, or leaves one that is not a loop over lights.
    /// The target of a jump must be the start of an instruction or the end of the block, which the
    /// reader ensures.
    explicit QxBrackets(const QxUntrustedBlock& block);

    /// True if an instruction is in a parallel run; the end of a parallel run counts as inside, its
    /// start does not.
    [[nodiscard]] bool InParallel(std::size_t index) const
    {
        return m_brackets[m_around[index]].parallel;
    }
    /// Returns the innermost bracket around an instruction, or around the end of the block if
    /// `index` is the number of instructions.
    [[nodiscard]] const Bracket& Around(std::size_t index) const
    {
        return m_brackets[m_around[index]];
    }

private:
    void Open(const QxUntrustedBlock& block, std::size_t index);
    void Close(const QxUntrustedBlock& block, std::size_t index);
    void CheckLoop(const QxUntrustedBlock& block, const Bracket& loop) const;
    void CheckJump(const QxUntrustedBlock& block, std::size_t index) const;

    std::vector<Bracket> m_brackets;    // the first is the whole block
    std::vector<std::size_t> m_around;  // bracket of each instruction, and of the block's end
    std::size_t m_open = 0;             // number of the innermost open bracket
};
