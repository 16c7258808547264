#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "symbols/SlcSymbolEntry.h"

/// Records the variables that are written while loops are evaluated, with their details before the
/// write. A round is one evaluation of a loop's code: at its end, the details are joined with those
/// before it. The evaluation of a body and those of the functions that it calls share one journal,
/// since a nested function may write variables of the bodies around it.
class SlcInlineJournal {
public:
    /// Begins a round, inside the rounds that have not ended. Each round must be ended.
    void BeginRound();
    /// Records the variable's detail if this is its first write in the current round. Call it
    /// before the write sets another detail; does nothing outside of loops.
    void NoteWrite(SlcVarSymbolEntry& variable);
    /// Records that a declaration or a call gives the variable its first value in the current
    /// round, so that its detail does not depend on the previous round. Ignored if the round has
    /// written the variable already, and outside of loops.
    void NoteDefinition(SlcVarSymbolEntry& variable);
    /// Ends the round and sets the variables that it has recorded as written to the join of their
    /// details before and after it. Returns true if the joined detail of a variable differs from
    /// the one before the round.
    [[nodiscard]] bool EndRound();
    /// Ends the round and makes the variables that it has recorded as written varying, so that
    /// another round changes nothing.
    void EndRoundAsVarying();
    /// True if all loops of the evaluation together have taken more than `k_mostRounds` rounds.
    [[nodiscard]] bool IsExhausted() const { return m_count > k_mostRounds; }
    /// True on the first call, so that too many rounds are reported once.
    [[nodiscard]] bool IsFirstReport() { return !std::exchange(m_reported, true); }

private:
    using Round = std::unordered_map<SlcVarSymbolEntry*, SlcDetailNode*>;  // null: defined in it

    /// Ends the round, adds its record to that of the enclosing round, if any, and returns it.
    [[nodiscard]] Round Take();

    static constexpr int k_mostRounds = 100'000;

    std::vector<Round> m_rounds;  // details before each round, the innermost loop last
    int m_count = 0;
    bool m_reported = false;
};
