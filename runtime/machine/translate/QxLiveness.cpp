// Backward data flow over bit sets, one bit per local. An untrusted file determines how many
// locals, basic blocks and conditions there are, and how many walks its jumps need, so the work is
// limited.
//
// Tested by tests/machine/DraftPassesTest.cpp, and by tests/host/AgreementTest.cpp against shared
// objects.

#include "machine/translate/QxLiveness.h"

#include <algorithm>

namespace {

// A file could otherwise need more memory and time than its size justifies.
constexpr std::size_t k_mostWords = std::size_t{1} << 22;  // of the sets of all basic blocks
constexpr std::size_t k_mostWork = std::size_t{1} << 24;   // drafts and words of all walks

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
    // The result is followed even if the block does not contain it, so that it is cleared: it would
    // otherwise be a value left by another block.
    if (m_result)
        number(*m_result);
}

/// Assigns a bit to the variable if it is to be followed and has none.
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
    FindConditions();
    const std::size_t words = m_locals.size() / 64 + 1;
    if (m_blocks.size() * words > k_mostWords)
        return false;
    const std::size_t workOfWalk =
        m_block.drafts.size() + (m_blocks.size() + m_conditionCount) * words;
    std::size_t work = 0;
    for (bool changed = true; changed;) {
        work += workOfWalk;
        if (work > k_mostWork)
            return false;
        changed = false;
        WalkOnce(changed);
        // Code without jumps is a single basic block, for which one walk is enough.
        changed = changed && m_blocks.size() > 1;
    }
    return true;
}

void QxLiveness::WalkOnce(bool& changed)
{
    for (std::size_t i = m_blocks.size(); i-- > 0;) {
        m_live = LiveAfter(m_blocks[i]);
        for (std::size_t j = m_blocks[i].end; j-- > m_blocks[i].begin;)
            Step(j);
        changed = m_blocks[i].liveIn.AddAll(m_live) || changed;
    }
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

void QxLiveness::FindConditions()
{
    m_conditions.assign(m_block.drafts.size(), 0);
    m_conditionCount = 0;
    std::vector<std::uint32_t> open;
    for (std::uint32_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxCodeStep step = m_block.drafts[i].code.step;
        if (QxIsCondition(step)) {
            open.push_back(i);
            ++m_conditionCount;
        } else if (step == QxCodeStep::EndIf) {
            m_conditions[i] = open.back();
            open.pop_back();
        }
    }
}

void QxLiveness::Renumber(const std::vector<std::uint32_t>& newIndexes)
{
    FindConditions();
    for (BasicBlock& block : m_blocks) {
        block.begin = newIndexes[block.begin];
        block.end = newIndexes[block.end];
    }
}

void QxLiveness::Replace(const QxOperand& local, const QxOperand& by)
{
    for (BasicBlock& block : m_blocks) {
        if (!block.liveIn.Has(m_bits[local.variable]))
            continue;
        block.liveIn.Remove(m_bits[local.variable]);
        block.liveIn.Add(m_bits[by.variable]);
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
    m_live.AddAll(m_outside.back().ofThis);
    m_outside.pop_back();
}

/// `index` is that of `EndIf`.
void QxLiveness::EndBrackets(std::size_t index)
{
    LiveSet ofThis = m_live;
    RemoveClearedFlags(index, ofThis);
    LiveSet ofAll = ofThis;
    if (!m_outside.empty())
        ofAll.AddAll(m_outside.back().ofAll);
    m_outside.push_back({std::move(ofThis), std::move(ofAll)});
}

/// Removes the flags that an `and` right after the brackets clears at the points that do not enter
/// them. Does nothing for `IfFalse`, and for brackets that write their own flag. `index` is that of
/// `EndIf`.
void QxLiveness::RemoveClearedFlags(std::size_t index, LiveSet& live) const
{
    const QxCode& guard = m_block.drafts[m_conditions[index]].code;
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
            live.Remove(m_bits[operands[0].variable]);
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
    return !m_outside.empty() && m_outside.back().ofAll.Has(m_bits[operand.variable]);
}

std::vector<std::uint32_t> QxLiveness::ReadFirst() const
{
    std::vector<std::uint32_t> read;
    for (std::uint32_t bit = 0; bit < m_locals.size(); ++bit)
        if (m_blocks[0].liveIn.Has(bit))
            read.push_back(m_locals[bit]);
    return read;
}
