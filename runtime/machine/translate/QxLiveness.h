#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "machine/translate/QxDraft.h"
#include "machine/translate/QxMachineCode.h"

/// Liveness of locals, except arrays, texts and references, at each place of a block.
///
/// Alfred Aho, Ravi Sethi, Jeffrey Ullman, "Compilers", 1986, 10.6. The difference is that the
/// brackets of a condition run only for the points of its flag. So a write inside kills the value
/// only for these points, and at the start of the brackets their live set is merged with that of
/// the other points. If operations `g = g and f` come right after brackets of `if f` that do not
/// write `f`, the other points do not count as readers of `g`: their result is false.
class QxLiveness {
public:
    /// `block` must outlive this object, and be whole: it ends with a stop, and its jumps refer to
    /// drafts. `variables` are those of the program. Locals are followed unless they are arrays,
    /// texts or references. `result` is the variable that is read after the block; an initializer
    /// has one, and main has none.
    QxLiveness(const QxDraftBlock& block, const std::vector<QxStorage>& variables,
               std::optional<std::uint32_t> result);

    /// Computes the live-in set of each basic block. Returns false if that would be too much work:
    /// then only `Locals` may be called. A walk costs O(n + (b + c) l / 64) for n drafts, b basic
    /// blocks, c conditions and l locals; loops need a few walks.
    [[nodiscard]] bool Compute();

    /// Calls `visit(index, begin)` for each draft of one basic block after the other, from the last
    /// draft of the block to the first, whose index is `begin`. `visit` may change the draft and
    /// those before it in the basic block, as long as the basic block needs no values from outside
    /// that it did not need before. May be called any number of times after `Compute`.
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

    /// Call it after drafts were dropped. Each basic block must have kept at least one draft.
    /// `newIndexes` is the result of `QxDraftBlock::Keep`.
    void Renumber(const std::vector<std::uint32_t>& newIndexes);

    /// Call it after `by` has replaced `local` in the whole block, where `local` had the value of
    /// `by` wherever it was live. Both are followed.
    void Replace(const QxOperand& local, const QxOperand& by);

    // During a visit, for the place after the visited draft:

    /// True for a local that is followed; any other variable counts as live everywhere.
    [[nodiscard]] bool Follows(const QxOperand& operand) const
    {
        return m_bits[operand.variable] != k_none;
    }
    /// True if points that run the draft may read the operand later.
    [[nodiscard]] bool IsLive(const QxOperand& operand) const
    {
        return !Follows(operand) || m_live.Has(m_bits[operand.variable]);
    }
    /// True if points outside one of the open conditions may read the operand later: they need its
    /// value from before the brackets, so a write must respect the mask.
    [[nodiscard]] bool IsLiveElsewhere(const QxOperand& operand) const;
    [[nodiscard]] bool IsWithinCondition() const { return !m_outside.empty(); }

    // After `Compute`:

    /// Returns the numbers of the followed locals that may be read before they are written: a run
    /// must set them to zero first.
    [[nodiscard]] std::vector<std::uint32_t> ReadFirst() const;
    /// Returns the numbers of all followed locals.
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
        /// Adds the locals of another set. Returns true if this one has changed.
        bool AddAll(const LiveSet& other);

    private:
        std::vector<std::uint64_t> m_words;
    };

    /// The locals that are live at the end of an open condition for the points that are not in it.
    struct Outside {
        LiveSet ofThis;
        LiveSet ofAll;  // also for those that did not enter one of the conditions around it
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
    void FindConditions();
    void WalkOnce(bool& changed);
    [[nodiscard]] LiveSet LiveAfter(const BasicBlock& block) const;
    [[nodiscard]] const BasicBlock& BlockAt(std::size_t draft) const;
    void Step(std::size_t index);
    void Read(const QxOperand& operand);
    void BeginBrackets();
    void EndBrackets(std::size_t index);
    void RemoveClearedFlags(std::size_t index, LiveSet& live) const;
    void StepOperands(const QxDraft& draft);

    const QxDraftBlock& m_block;
    const std::optional<std::uint32_t> m_result;  // live at the stop
    std::vector<std::uint32_t> m_bits;            // by variable; `k_none` if it is not followed
    std::vector<std::uint32_t> m_locals;          // by bit
    std::vector<BasicBlock> m_blocks;
    std::vector<std::uint32_t> m_conditions;  // by draft that ends a condition: its start
    std::size_t m_conditionCount = 0;
    LiveSet m_live;
    std::vector<Outside> m_outside;  // by open condition of the walk, innermost last
};
