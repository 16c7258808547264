#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "machine/verify/QxOperandCheck.h"
#include "machine/verify/QxUntrustedBlock.h"

/// Whether each reference stands for elements of one array, and is bound wherever it is used: an
/// `ARRAY_REF` stands on every way from the beginning of the block. Ways are those of jumps and
/// loops over lights; a conditional bracket counts as entered.
class QxReferenceCheck {
public:
    /// `facts`: of all variables of the shader. Both must outlive this.
    QxReferenceCheck(const QxUntrustedBlock& block, const std::vector<QxOperandFacts>& facts);

    /// Throws `QxRefused` for the first use that may come before a binding, for a reference that is
    /// bound to two arrays, and if jumps are too tangled to follow. Operands must have been
    /// checked. O(n) for n operands; references that are bound far from their use cost a bit for
    /// each of them and each target of a jump, a few times over.
    void Run();

private:
    using Set = std::vector<std::uint64_t>;  // of references, by their place among the far ones

    void FindArrays();
    void FindJoins();
    void FindFarReferences();
    [[nodiscard]] bool Walk();
    void Step(std::size_t index);
    void Flow(std::size_t target);
    void Bind(std::size_t reference);
    [[nodiscard]] bool IsBound(std::size_t reference) const;
    template <class Use>
    void ForEachUse(const SqxInstruction& instruction, Use use) const;
    [[nodiscard]] std::size_t Target(const SqxInstruction& jump) const;

    const QxUntrustedBlock& m_block;
    const std::vector<QxOperandFacts>& m_facts;
    std::vector<bool> m_isJoin;  // ways meet in front of the instruction

    std::unordered_map<std::size_t, std::size_t> m_far;  // place of a far reference by its number
    std::unordered_map<std::size_t, Set> m_atJoin;       // bound on the ways seen so far
    Set m_bound;                                         // on the ways to the instruction at hand
    std::size_t m_index = 0;                             // of the instruction at hand
    bool m_changed = false;                              // a way back leads to a join with less
};
