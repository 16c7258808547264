#pragma once

#include <cstddef>
#include <vector>

#include "machine/verify/QxUntrustedBlock.h"

/// The brackets of a block: loops over lights, parallel runs and what stands under a condition.
/// They are found once, in O(n) for n instructions but for jumps out of loops over lights, which
/// cost the loops that they leave; the checks behind it ask in constant time.
class QxBrackets {
public:
    /// One pair, or the whole block, whose fields stay as they are at first.
    struct Bracket {
        SqxMark begin = SqxMark::BeginParallel;
        std::size_t first = 0;   // index of the instruction that opens it
        std::size_t last = 0;    // of the one that closes it
        std::size_t parent = 0;  // bracket around it, by its place in the order of beginnings
        std::size_t depth = 0;   // 1 for those that stand in no other
        bool parallel = false;   // it is a parallel run, or stands in one
    };

    /// Throws `QxRefused` if brackets do not nest, are nested more deeply than
    /// `QxVerifier::k_deepestNesting`, or a jump goes into or out of one: it may leave loops over
    /// lights only. The targets of jumps must be beginnings of instructions, as the reader sees to.
    explicit QxBrackets(const QxUntrustedBlock& block);

    /// Whether an instruction stands in a parallel run; the ends of a bracket stand in it, their
    /// beginnings do not.
    [[nodiscard]] bool InParallel(std::size_t index) const
    {
        return m_brackets[m_around[index]].parallel;
    }
    /// The innermost bracket that an instruction stands in, or that the end of the block does, if
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

    std::vector<Bracket> m_brackets;    // the first stands for the whole block
    std::vector<std::size_t> m_around;  // bracket of each instruction, and of the block's end
    std::size_t m_open = 0;             // innermost bracket that is open
};
