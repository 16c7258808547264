#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "machine/verify/QxOperandCheck.h"
#include "machine/verify/QxUntrustedBlock.h"

/// Checks that each reference refers to elements of one array, and is bound wherever it is used: on
/// every path from the start of the block to the use there must be an `ARRAY_REF`. Paths follow
/// jumps and loops over lights; a conditional bracket counts as entered.
class QxReferenceCheck {
public:
    /// `facts` are those of all variables of the shader. Both must outlive this object.
    QxReferenceCheck(const QxUntrustedBlock& block, const std::vector<QxOperandFacts>& facts);

    /// Throws `QxRefused` for the first use that some path reaches without a binding, for a
    /// reference that is bound to two arrays, and if jumps are too tangled to follow. Operands must
    /// have been checked. O(n log n) for n operands, plus, for each of at most 17 walks, one bit
    /// for each pair of a jump and a far reference, that is, one that is not always bound in the
    /// straight-line code of its use.
    void Run();

private:
    using Set = std::vector<std::uint64_t>;  // of references, by their index among the far ones

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
    std::vector<bool> m_isJoin;  // paths join before the instruction

    std::unordered_map<std::size_t, std::size_t> m_far;  // index of a far reference by its number
    std::unordered_map<std::size_t, Set> m_atJoin;       // bound on all paths seen so far
    Set m_bound;                                         // bound on all paths to this instruction
    std::size_t m_index = 0;                             // of the current instruction
    bool m_changed = false;                              // a backward jump has shrunk the set of a
                                                         // join
};
