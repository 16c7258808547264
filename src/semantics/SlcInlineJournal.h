#pragma once

#include <unordered_map>
#include <utility>
#include <vector>

#include "symbols/SlcSymbolEntry.h"

/// The variables whose inline details change while loops are evaluated, so that what a round of a
/// loop leaves can be joined with what the round before has left. One for an evaluation and those
/// inside it, since a nested function writes variables of the bodies around it.
class SlcInlineJournal {
public:
    /// A round of a loop begins, inside the loops that are open. Each has its end below.
    void BeginRound();
    /// The variable is about to get another detail.
    void NoteWrite(SlcVarSymbolEntry& variable);
    /// The variable is defined again: nothing of the last round is left in it.
    void NoteDefinition(SlcVarSymbolEntry& variable);
    /// The round ends. Joins the details that it has found with those that it leaves; true if a
    /// variable has another detail for that.
    [[nodiscard]] bool EndRound();
    /// The same, but what is written becomes varying, so that another round changes nothing.
    void EndRoundAsVarying();
    /// Loops within loops have taken more rounds than anyone would wait for.
    [[nodiscard]] bool IsExhausted() const { return m_count > k_mostRounds; }
    /// True once: that has still to be reported.
    [[nodiscard]] bool IsFirstReport() { return !std::exchange(m_reported, true); }

private:
    using Round = std::unordered_map<SlcVarSymbolEntry*, SlcDetailNode*>;  // null: defined again

    /// Ends the round and hands what it has found to the loop around.
    [[nodiscard]] Round Take();

    static constexpr int k_mostRounds = 100'000;

    std::vector<Round> m_rounds;  // what each variable had, the innermost loop last
    int m_count = 0;
    bool m_reported = false;
};
