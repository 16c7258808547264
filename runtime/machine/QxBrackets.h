#pragma once

#include <cstddef>
#include <vector>

#include "machine/QxUntrustedBlock.h"

/// The brackets of a block: loops over lights, parallel runs and what stands under a condition.
class QxBrackets {
public:
    struct Bracket {
        SqxMark begin = SqxMark::BeginParallel;
        std::size_t first = 0;   // index of the instruction that opens it
        std::size_t last = 0;    // of the one that closes it
        std::size_t parent = 0;  // bracket around it
        std::size_t depth = 0;
        bool parallel = false;  // it is a parallel run, or stands in one
    };

    /// Throws `QxRefused` if brackets do not nest, are nested too deeply, or a jump goes into or
    /// out of one as it must not.
    explicit QxBrackets(const QxUntrustedBlock& block);

    /// Whether an instruction stands in a parallel run; the ends of a bracket stand in it, their
    /// beginnings do not.
    [[nodiscard]] bool InParallel(std::size_t index) const
    {
        return m_brackets[m_around[index]].parallel;
    }
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
