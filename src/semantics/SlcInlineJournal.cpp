// A stack of rounds. A round stores the detail of each variable that it writes, before the first
// write:
//
//     round begins      x uniform
//     x written         stored: uniform; now varying
//     round ends        joined: varying, differs from the start: one more round
//
// A variable that is defined in the round before any write is stored with null, since no value of
// the previous round reaches it. An inner round adds its record to that of the outer one, where
// details that are already stored remain.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp, through the loops that use it.

#include "semantics/SlcInlineJournal.h"

#include <utility>

void SlcInlineJournal::BeginRound()
{
    m_rounds.emplace_back();
    ++m_count;
}

void SlcInlineJournal::NoteWrite(SlcVarSymbolEntry& variable)
{
    SlcDetailNode* const before = variable.GetInlineDetail();
    if (!m_rounds.empty())
        m_rounds.back().try_emplace(&variable, before ? before : SlcDetailNode::AUnknown());
}

void SlcInlineJournal::NoteDefinition(SlcVarSymbolEntry& variable)
{
    if (!m_rounds.empty())
        m_rounds.back().try_emplace(&variable, nullptr);
}

SlcInlineJournal::Round SlcInlineJournal::Take()
{
    Round round = std::move(m_rounds.back());
    m_rounds.pop_back();
    if (!m_rounds.empty())
        m_rounds.back().insert(round.begin(), round.end());
    return round;
}

bool SlcInlineJournal::EndRound()
{
    bool changed = false;
    for (const auto& [variable, before] : Take()) {
        if (!before)
            continue;
        SlcDetailNode* const joined = SlcDetailNode::Combine(before, variable->GetInlineDetail());
        changed |= joined != before;
        variable->SetInlineDetail(joined);
    }
    return changed;
}

void SlcInlineJournal::EndRoundAsVarying()
{
    for (const auto& [variable, before] : Take())
        if (before)
            variable->SetInlineDetail(SlcDetailNode::AVarying());
}
