#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineCode.h"

/// Liveness of locals that hold a single value, at each place of a block.
///
/// Alfred Aho, Ravi Sethi, Jeffrey Ullman, "Compilers", 1986, 10.6. Where ours departs: the
/// brackets of a condition run only for the points of its flag. So a write inside kills a value
/// only for these points, and at the start of the brackets the live sets of both kinds of points
/// are merged. A flag that is combined by `and` with the brackets' own flag right after them does
/// not count as read by the other points.
class QxLiveness {
public:
    /// `block` must outlive this object, and be whole: it ends with a stop, and its jumps refer to
    /// drafts. `variables` are those of the program. Locals are followed unless they are arrays,
    /// texts or references. `result` is a variable that is read after the block, such as that of an
    /// initializer; none for main.
    QxLiveness(const QxDraftBlock& block, const std::vector<QxStorage>& variables,
               std::optional<std::uint32_t> result);

    /// Computes the live-in set of each basic block. False if that would be too much work: then
    /// only `Locals` may be called. A walk costs O(n + b l / 64) for n drafts, b blocks and l
    /// locals; loops need a few walks.
    [[nodiscard]] bool Compute();

    /// Calls `visit(index, begin)` for each draft, from the last to the first of a basic block,
    /// which begins at `begin`. `visit` may change the draft and those before it, as long as they
    /// read nothing new. May be called any number of times after `Compute`.
    template <class Visit>
    void WalkBack(const Visit& visit)
    {
        for (const BasicBlock& block : m_blocks) {
            m_live = LiveAfter(block);
            for (std::size_t i = block.end; i-- > block.begin;) {
                visit(i, block.begin);
                Step(i);
            }
        }
    }

    /// Call it after drafts were dropped, at least one being left in each basic block. `newIndexes`
    /// is the result of `QxDraftBlock::Keep`.
    void Renumber(const std::vector<std::uint32_t>& newIndexes);

    // During a visit, for the place after the visited draft:

    /// True for a local that is followed; any other variable counts as live everywhere.
    [[nodiscard]] bool Follows(const QxOperand& operand) const
    {
        return m_bits[operand.variable] != k_none;
    }
    /// True if points that run the draft may read it later.
    [[nodiscard]] bool IsLive(const QxOperand& operand) const
    {
        return !Follows(operand) || m_live.Has(m_bits[operand.variable]);
    }
    /// True if points outside the open conditions may read it: they need its value from before the
    /// brackets, so a write must respect the mask.
    [[nodiscard]] bool IsLiveElsewhere(const QxOperand& operand) const;
    [[nodiscard]] bool IsWithinCondition() const { return !m_liveOutside.empty(); }

    // After `Compute`:

    /// Returns the followed locals that may be read before they are written, as variables: a run
    /// must set them to zero first.
    [[nodiscard]] std::vector<std::uint32_t> ReadFirst() const;
    /// All followed locals, as variables.
    [[nodiscard]] const std::vector<std::uint32_t>& Locals() const { return m_locals; }

private:
    /// The locals that are live at a place.
    class LiveSet {
    public:
        explicit LiveSet(std::size_t bits = 0) : m_words((bits + 63) / 64) {}
        void Add(std::uint32_t bit) { m_words[bit / 64] |= std::uint64_t{1} << bit % 64; }
        void Remove(std::uint32_t bit) { m_words[bit / 64] &= ~(std::uint64_t{1} << bit % 64); }
        [[nodiscard]] bool Has(std::uint32_t bit) const
        {
            return (m_words[bit / 64] >> bit % 64 & 1) != 0;
        }
        /// True if the set has changed.
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
    [[nodiscard]] LiveSet LiveAfter(const BasicBlock& block) const;
    [[nodiscard]] const BasicBlock& BlockAt(std::size_t draft) const;
    void Step(std::size_t index);
    void Read(const QxOperand& operand);
    void BeginBrackets();
    void EndBrackets(std::size_t index);
    void StepOperands(const QxDraft& draft);

    const QxDraftBlock& m_block;
    const std::optional<std::uint32_t> m_result;  // live at the stop
    std::vector<std::uint32_t> m_bits;            // by variable; none if it is not followed
    std::vector<std::uint32_t> m_locals;          // by bit
    std::vector<BasicBlock> m_blocks;
    LiveSet m_live;
    std::vector<LiveSet> m_liveOutside;  // open brackets during the backward walk, innermost last
};
