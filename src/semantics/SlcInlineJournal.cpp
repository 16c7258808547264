// A stack of rounds. A round keeps for each variable what it had before its first write there:
//
//     round begins      x uniform
//     x written         note: uniform; now varying
//     round ends        joined: varying, which is not what the round began with: one more round
//
// A definition in the round is noted as null, since nothing of the round before reaches it. An
// inner round hands its notes to the outer one, whose earlier notes win.
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
