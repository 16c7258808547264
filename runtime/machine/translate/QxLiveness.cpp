// Backward data flow over bit sets, one bit per local. An untrusted file determines how many locals
// and basic blocks there are, so their product is limited before the work begins.
//
// Tested by tests/machine/DraftPassesTest.cpp, and by tests/host/AgreementTest.cpp against shared
// objects.

#include "machine/translate/QxLiveness.h"

#include <algorithm>

namespace {

// A file could otherwise cause more work than its size justifies.
constexpr std::size_t k_highestWork = std::size_t{1} << 22;

}  // namespace

bool QxLiveness::LiveSet::AddAll(const LiveSet& other)
{
    bool changed = false;
    for (std::size_t i = 0; i < m_words.size(); ++i) {
        const std::uint64_t sum = m_words[i] | other.m_words[i];
        changed = changed || sum != m_words[i];
        m_words[i] = sum;
    }
    return changed;
}

QxLiveness::QxLiveness(const QxDraftBlock& block, const std::vector<QxStorage>& variables,
                       std::optional<std::uint32_t> result)
    : m_block(block),
      m_result(result),
      m_bits(variables.size(), k_none)
{
    NumberLocals(variables);
}

void QxLiveness::NumberLocals(const std::vector<QxStorage>& variables)
{
    const auto number = [&](std::uint32_t variable) { Number(variable, variables[variable]); };
    for (const QxOperand& operand : m_block.operands)
        number(operand.variable);
    for (const QxDraft& draft : m_block.drafts)
        number(draft.code.flag.variable);
    // Followed even if the block never writes it, so that it is cleared: otherwise the result would
    // be a value left by another block.
    if (m_result)
        number(*m_result);
}

/// Assigns a bit to a variable that is followed and has none.
void QxLiveness::Number(std::uint32_t variable, const QxStorage& storage)
{
    const bool followed =
        (storage.kind == QxStorage::Kind::Local || storage.kind == QxStorage::Kind::Borrowed) &&
        storage.size == 1 && storage.stored != QxStored::Text;
    if (!followed || m_bits[variable] != k_none)
        return;
    m_bits[variable] = static_cast<std::uint32_t>(m_locals.size());
    m_locals.push_back(variable);
}

bool QxLiveness::Compute()
{
    FindBlocks();
    if (m_blocks.size() * (m_locals.size() / 64 + 1) > k_highestWork)
        return false;
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = m_blocks.size(); i-- > 0;) {
            m_live = LiveAfter(m_blocks[i]);
            for (std::size_t j = m_blocks[i].end; j-- > m_blocks[i].begin;)
                Step(j);
            changed = m_blocks[i].liveIn.AddAll(m_live) || changed;
        }
        // Code without jumps is a single basic block, for which one walk is enough.
        changed = changed && m_blocks.size() > 1;
    }
    return true;
}

void QxLiveness::FindBlocks()
{
    std::vector<char> starts(m_block.drafts.size() + 1, 0);
    starts[0] = 1;
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxCode& code = m_block.drafts[i].code;
        if (QxIsJump(code.step)) {
            starts[code.target] = 1;
            starts[i + 1] = 1;
        }
    }
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i)
        if (starts[i])
            m_blocks.push_back({i, i, LiveSet(m_locals.size())});
    for (std::size_t i = 0; i < m_blocks.size(); ++i)
        m_blocks[i].end = i + 1 < m_blocks.size() ? m_blocks[i + 1].begin : m_block.drafts.size();
}

void QxLiveness::Renumber(const std::vector<std::uint32_t>& newIndexes)
{
    for (BasicBlock& block : m_blocks) {
        block.begin = newIndexes[block.begin];
        block.end = newIndexes[block.end];
    }
}

const QxLiveness::BasicBlock& QxLiveness::BlockAt(std::size_t draft) const
{
    return *std::lower_bound(
        m_blocks.begin(), m_blocks.end(), draft,
        [](const BasicBlock& block, std::size_t begin) { return block.begin < begin; });
}

QxLiveness::LiveSet QxLiveness::LiveAfter(const BasicBlock& block) const
{
    LiveSet live(m_locals.size());
    const QxCode& last = m_block.drafts[block.end - 1].code;
    if (QxIsJump(last.step))
        live.AddAll(BlockAt(last.target).liveIn);
    if (last.step == QxCodeStep::Stop) {
        if (m_result && m_bits[*m_result] != k_none)
            live.Add(m_bits[*m_result]);
    } else if (last.step != QxCodeStep::Goto) {
        live.AddAll(BlockAt(block.end).liveIn);
    }
    return live;
}

/// Updates the live set backwards over one instruction.
void QxLiveness::Step(std::size_t index)
{
    const QxDraft& draft = m_block.drafts[index];
    switch (draft.code.step) {
    case QxCodeStep::EndIf:
        EndBrackets(index);
        break;
    case QxCodeStep::IfTrue:
    case QxCodeStep::IfFalse:
        BeginBrackets();
        Read(draft.code.flag);
        break;
    case QxCodeStep::GotoIfTrue:
    case QxCodeStep::GotoIfFalse:
        Read(draft.code.flag);
        break;
    default:
        StepOperands(draft);
    }
}

void QxLiveness::Read(const QxOperand& operand)
{
    if (Follows(operand))
        m_live.Add(m_bits[operand.variable]);
}

void QxLiveness::BeginBrackets()
{
    m_live.AddAll(m_liveOutside.back());
    m_liveOutside.pop_back();
}

/// `index` is that of `EndIf`. Pushes the set for points that do not enter the brackets.
void QxLiveness::EndBrackets(std::size_t index)
{
    m_liveOutside.push_back(m_live);
    std::size_t depth = 1;
    std::size_t begin = index;
    while (depth > 0) {
        const QxCodeStep step = m_block.drafts[--begin].code.step;
        depth += step == QxCodeStep::EndIf ? 1 : 0;
        depth -= QxIsCondition(step) ? 1 : 0;
    }
    const QxCode& guard = m_block.drafts[begin].code;
    if (guard.step != QxCodeStep::IfTrue || guard.copyFlag)
        return;
    for (std::size_t i = index + 1; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (!draft.row || draft.row->primitive != SqxPrimitive::MACHINE_AND)
            return;
        const QxOperand* operands = m_block.operands.data() + draft.first;
        if (operands[1].variable != guard.flag.variable ||
            operands[0].variable == guard.flag.variable)
            return;
        if (Follows(operands[0]))
            m_liveOutside.back().Remove(m_bits[operands[0].variable]);
    }
}

void QxLiveness::StepOperands(const QxDraft& draft)
{
    const QxCode& code = draft.code;
    const QxOperand* operands = m_block.operands.data() + draft.first;
    const char* letters = m_block.letters.data() + draft.first;
    const bool everywhere = code.step != QxCodeStep::GridIf;
    for (std::size_t k = 0; k < code.count; ++k)
        if (letters[k] == 'w' && everywhere && Follows(operands[k]))
            m_live.Remove(m_bits[operands[k].variable]);
    for (std::size_t k = 0; k < code.count; ++k)
        if (letters[k] != 'w')
            Read(operands[k]);
    if (code.step == QxCodeStep::GridIf)
        Read(code.flag);
}

bool QxLiveness::IsLiveElsewhere(const QxOperand& operand) const
{
    if (!Follows(operand))
        return true;
    const std::uint32_t bit = m_bits[operand.variable];
    return std::any_of(m_liveOutside.begin(), m_liveOutside.end(),
                       [bit](const LiveSet& outside) { return outside.Has(bit); });
}

std::vector<std::uint32_t> QxLiveness::ReadFirst() const
{
    std::vector<std::uint32_t> read;
    for (std::uint32_t bit = 0; bit < m_locals.size(); ++bit)
        if (m_blocks[0].liveIn.Has(bit))
            read.push_back(m_locals[bit]);
    return read;
}
