#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineCode.h"

/// Which locals of one value are still read, at each place of a block.
///
/// Alfred Aho, Ravi Sethi, Jeffrey Ullman, "Compilers", 1986, 10.6. Where ours departs: the
/// brackets of a condition hold only for the points of its flag. So a write within them ends the
/// life of a value for these points, and on the way back the others' come to it at the begin of the
/// brackets. A flag that `and` combines with the brackets' own right behind them is not read for
/// the others.
class QxLiveness {
public:
    /// `block` must outlive this, and be whole: ended by a stop, its jumps among the drafts.
    /// `variables`: of the program. Followed are locals that are no arrays, texts or references.
    /// `result`: a variable that is read once the block has run, as that of an initializer is;
    /// none for main.
    QxLiveness(const QxDraftBlock& block, const std::vector<QxStorage>& variables,
               std::optional<std::uint32_t> result);

    /// Finds what is alive at the begin of each basic block. False if that would be too much work:
    /// then only `Locals` may be asked. A walk costs O(n + b l / 64) for n drafts, b blocks and l
    /// locals, and a few are needed where there are loops.
    [[nodiscard]] bool Compute();

    /// Calls `visit(index, begin)` for each draft, from the last to the first of a basic block,
    /// which begins at `begin`. It may change the draft and those before it, as long as what they
    /// read was read there before. Only after `Compute`, any number of times.
    template <class Visit>
    void WalkBack(const Visit& visit)
    {
        for (const BasicBlock& block : m_blocks) {
            m_live = LiveBehind(block);
            for (std::size_t i = block.end; i-- > block.begin;) {
                visit(i, block.begin);
                Step(i);
            }
        }
    }

    /// Drafts were dropped; no basic block lost all. `newIndexes`: as `QxDraftBlock::Keep` gives.
    void Renumber(const std::vector<std::uint32_t>& newIndexes);

    // While a draft is visited: behind it.

    /// One of the locals that are followed; whoever is not counts as alive everywhere.
    [[nodiscard]] bool Follows(const QxOperand& operand) const
    {
        return m_bits[operand.variable] != k_none;
    }
    /// Points that run the draft may read it.
    [[nodiscard]] bool IsLive(const QxOperand& operand) const
    {
        return !Follows(operand) || m_live.Has(m_bits[operand.variable]);
    }
    /// Points that the open conditions leave out may read it: they need the value that it has in
    /// front of the brackets, so that a write must heed the mask.
    [[nodiscard]] bool IsLiveElsewhere(const QxOperand& operand) const;
    [[nodiscard]] bool IsWithinCondition() const { return !m_behind.empty(); }

    // Afterwards.

    /// Those of the followed locals that may be read before they are written, as variables: a run
    /// must set them to zero first.
    [[nodiscard]] std::vector<std::uint32_t> ReadFirst() const;
    /// All that are followed, as variables.
    [[nodiscard]] const std::vector<std::uint32_t>& Locals() const { return m_locals; }

private:
    /// The locals that are alive at a place.
    class LiveSet {
    public:
        explicit LiveSet(std::size_t bits = 0) : m_words((bits + 63) / 64) {}
        void Add(std::uint32_t bit) { m_words[bit / 64] |= std::uint64_t{1} << bit % 64; }
        void Remove(std::uint32_t bit) { m_words[bit / 64] &= ~(std::uint64_t{1} << bit % 64); }
        [[nodiscard]] bool Has(std::uint32_t bit) const
        {
            return (m_words[bit / 64] >> bit % 64 & 1) != 0;
        }
        /// True if that adds something.
        bool AddAll(const LiveSet& other);

    private:
        std::vector<std::uint64_t> m_words;
    };

    struct BasicBlock {
        std::size_t begin;
        std::size_t end;
        LiveSet liveIn;
    };

    static constexpr std::uint32_t k_none = static_cast<std::uint32_t>(-1);

    void NumberLocals(const std::vector<QxStorage>& variables);
    void Number(std::uint32_t variable, const QxStorage& storage);
    void FindBlocks();
    [[nodiscard]] LiveSet LiveBehind(const BasicBlock& block) const;
    [[nodiscard]] const BasicBlock& BlockAt(std::size_t draft) const;
    void Step(std::size_t index);
    void Read(const QxOperand& operand);
    void BeginBrackets();
    void EndBrackets(std::size_t index);
    void StepOperands(const QxDraft& draft);

    const QxDraftBlock& m_block;
    const std::optional<std::uint32_t> m_result;  // live at the stop
    std::vector<std::uint32_t> m_bits;            // by variable; none for what is not followed
    std::vector<std::uint32_t> m_locals;          // by bit
    std::vector<BasicBlock> m_blocks;
    LiveSet m_live;
    std::vector<LiveSet> m_behind;  // the brackets that are open on the way back, innermost last
};
