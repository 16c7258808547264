#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "symbols/SlcSymbolEntry.h"

/// Records the variables whose details change while loops are evaluated, so that the details after
/// one round of a loop can be joined with those after the previous round. An evaluation and all
/// nested ones share one journal, since a nested function may write variables of the enclosing
/// bodies.
class SlcInlineJournal {
public:
    /// Begins a round of a loop, nested in the rounds that are open. Each round must be ended.
    void BeginRound();
    /// Call it before the variable gets another detail.
    void NoteWrite(SlcVarSymbolEntry& variable);
    /// Call it when the variable is defined again, so that its detail does not depend on the
    /// previous round.
    void NoteDefinition(SlcVarSymbolEntry& variable);
    /// Ends the round and joins the details before and after it. Returns true if the joined detail
    /// of a variable differs from the one before the round.
    [[nodiscard]] bool EndRound();
    /// Ends the round and makes all written variables varying, so that another round changes
    /// nothing.
    void EndRoundAsVarying();
    /// True if nested loops have taken too many rounds.
    [[nodiscard]] bool IsExhausted() const { return m_count > k_mostRounds; }
    /// True on the first call, so that this is reported once.
    [[nodiscard]] bool IsFirstReport() { return !std::exchange(m_reported, true); }

private:
    using Round = std::unordered_map<SlcVarSymbolEntry*, SlcDetailNode*>;  // null: defined again

    /// Ends the round and passes its record to the enclosing loop.
    [[nodiscard]] Round Take();

    static constexpr int k_mostRounds = 100'000;

    std::vector<Round> m_rounds;  // details before each round, the innermost loop last
    int m_count = 0;
    bool m_reported = false;
};
