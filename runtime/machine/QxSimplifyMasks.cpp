// Liveness of the locals of one value (Aho, Sethi, Ullman, "Compilers", 1986, 10.6), and what masks
// gain from it.
//
//     IfTrue f;  t = x * x;  y = t + 1;  EndIf
// becomes
//     IfTrue f;  t = x * x (for all points);  y = t + 1;  EndIf
//
// since nobody reads `t` behind the brackets: what other points hold in it does not matter, and a
// loop without a mask is faster. Brackets of one or two instructions that all ignore the mask
// vanish.
//
// Where ours departs: a bracket holds only for the points of its flag. So a write within it ends
// the life of a value for these points, and on the way back the others' come to it at its begin.
// A flag that `and` combines with the bracket's own right behind it is not read for the others.
// Tested with whole shaders, which are compared with shared objects.

#include "machine/QxSimplifyMasks.h"

#include <algorithm>

namespace {

// A file could ask for more than its size justifies.
constexpr std::size_t k_highestWork = std::size_t{1} << 22;
constexpr std::size_t k_shortBrackets = 2;
constexpr std::uint32_t k_none = static_cast<std::uint32_t>(-1);

/// The locals that are alive at a place.
class LiveSet {
public:
    explicit LiveSet(std::size_t bits) : m_words((bits + 63) / 64) {}
    void Add(std::uint32_t bit) { m_words[bit / 64] |= std::uint64_t{1} << bit % 64; }
    void Remove(std::uint32_t bit) { m_words[bit / 64] &= ~(std::uint64_t{1} << bit % 64); }
    [[nodiscard]] bool Has(std::uint32_t bit) const
    {
        return (m_words[bit / 64] >> bit % 64 & 1) != 0;
    }
    /// True if that adds something.
    bool AddAll(const LiveSet& other)
    {
        bool changed = false;
        for (std::size_t i = 0; i < m_words.size(); ++i) {
            const std::uint64_t sum = m_words[i] | other.m_words[i];
            changed = changed || sum != m_words[i];
            m_words[i] = sum;
        }
        return changed;
    }

private:
    std::vector<std::uint64_t> m_words;
};

struct BasicBlock {
    std::size_t begin;
    std::size_t end;
    LiveSet liveIn;
};

class MaskSimplifier {
public:
    MaskSimplifier(QxDraftBlock& block, const std::vector<QxStorage>& variables);
    void Run(std::vector<std::uint32_t>& clears);

private:
    enum class Rewrite { No, Yes };

    [[nodiscard]] std::uint32_t BitOf(const QxOperand& operand) const
    {
        return m_bits[operand.variable];
    }
    void NumberLocals(const std::vector<QxStorage>& variables);
    void FindBlocks();
    [[nodiscard]] LiveSet LiveBehind(const BasicBlock& block) const;
    [[nodiscard]] const BasicBlock& BlockAt(std::size_t draft) const;
    void Step(std::size_t index, LiveSet& live, Rewrite rewrite);
    void ReadFlag(const QxOperand& flag, LiveSet& live) const;
    void BeginBrackets(LiveSet& live);
    void EndBrackets(std::size_t index, const LiveSet& live);
    void StepOperands(QxDraft& draft, LiveSet& live, Rewrite rewrite);
    [[nodiscard]] bool IsDeadElsewhere(std::uint32_t bit) const;
    void DropShortBrackets();
    void Renumber(const std::vector<std::uint32_t>& newIndexes);

    QxDraftBlock& m_block;
    std::vector<std::uint32_t> m_bits;    // by variable; none for what is not followed
    std::vector<std::uint32_t> m_locals;  // by bit
    std::vector<BasicBlock> m_blocks;
    std::vector<LiveSet> m_behind;  // the brackets that are open on the way back, innermost last
};

MaskSimplifier::MaskSimplifier(QxDraftBlock& block, const std::vector<QxStorage>& variables)
    : m_block(block),
      m_bits(variables.size(), k_none)
{
    NumberLocals(variables);
}

void MaskSimplifier::NumberLocals(const std::vector<QxStorage>& variables)
{
    const auto number = [&](const QxOperand& operand) {
        const QxStorage& storage = variables[operand.variable];
        const bool followed =
            (storage.kind == QxStorage::Kind::Local || storage.kind == QxStorage::Kind::Borrowed) &&
            storage.size == 1 && storage.stored != QxStored::Text;
        if (!followed || m_bits[operand.variable] != k_none)
            return;
        m_bits[operand.variable] = static_cast<std::uint32_t>(m_locals.size());
        m_locals.push_back(operand.variable);
    };
    for (const QxOperand& operand : m_block.operands)
        number(operand);
    for (const QxDraft& draft : m_block.drafts)
        number(draft.code.flag);
}

void MaskSimplifier::FindBlocks()
{
    std::vector<char> starts(m_block.drafts.size() + 1, 0);
    starts[0] = 1;
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxCode& code = m_block.drafts[i].code;
        switch (code.step) {
        case QxCodeStep::Goto:
        case QxCodeStep::GotoIfTrue:
        case QxCodeStep::GotoIfFalse:
        case QxCodeStep::BeginLights:
        case QxCodeStep::EndLights:
            starts[code.target] = 1;
            starts[i + 1] = 1;
            break;
        default:
            break;
        }
    }
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i)
        if (starts[i])
            m_blocks.push_back({i, i, LiveSet(m_locals.size())});
    for (std::size_t i = 0; i < m_blocks.size(); ++i)
        m_blocks[i].end = i + 1 < m_blocks.size() ? m_blocks[i + 1].begin : m_block.drafts.size();
}

const BasicBlock& MaskSimplifier::BlockAt(std::size_t draft) const
{
    return *std::lower_bound(
        m_blocks.begin(), m_blocks.end(), draft,
        [](const BasicBlock& block, std::size_t begin) { return block.begin < begin; });
}

LiveSet MaskSimplifier::LiveBehind(const BasicBlock& block) const
{
    LiveSet live(m_locals.size());
    const QxCode& last = m_block.drafts[block.end - 1].code;
    const bool jumps = last.step == QxCodeStep::Goto || last.step == QxCodeStep::GotoIfTrue ||
                       last.step == QxCodeStep::GotoIfFalse ||
                       last.step == QxCodeStep::BeginLights || last.step == QxCodeStep::EndLights;
    if (jumps)
        live.AddAll(BlockAt(last.target).liveIn);
    if (last.step != QxCodeStep::Goto && last.step != QxCodeStep::Stop)
        live.AddAll(BlockAt(block.end).liveIn);
    return live;
}

void MaskSimplifier::Run(std::vector<std::uint32_t>& clears)
{
    FindBlocks();
    if (m_blocks.size() * (m_locals.size() / 64 + 1) > k_highestWork) {
        clears = m_locals;
        return;
    }
    for (bool changed = true; changed;) {
        changed = false;
        for (std::size_t i = m_blocks.size(); i-- > 0;) {
            LiveSet live = LiveBehind(m_blocks[i]);
            for (std::size_t j = m_blocks[i].end; j-- > m_blocks[i].begin;)
                Step(j, live, Rewrite::No);
            changed = m_blocks[i].liveIn.AddAll(live) || changed;
        }
        // Without a way back one walk does.
        changed = changed && m_blocks.size() > 1;
    }
    for (const BasicBlock& block : m_blocks) {
        LiveSet live = LiveBehind(block);
        for (std::size_t j = block.end; j-- > block.begin;)
            Step(j, live, Rewrite::Yes);
    }
    for (std::uint32_t bit = 0; bit < m_locals.size(); ++bit)
        if (m_blocks[0].liveIn.Has(bit))
            clears.push_back(m_locals[bit]);
    DropShortBrackets();
}

/// Over one instruction, backwards.
void MaskSimplifier::Step(std::size_t index, LiveSet& live, Rewrite rewrite)
{
    QxDraft& draft = m_block.drafts[index];
    switch (draft.code.step) {
    case QxCodeStep::EndIf:
        EndBrackets(index, live);
        break;
    case QxCodeStep::IfTrue:
    case QxCodeStep::IfFalse:
        BeginBrackets(live);
        ReadFlag(draft.code.flag, live);
        break;
    case QxCodeStep::GotoIfTrue:
    case QxCodeStep::GotoIfFalse:
        ReadFlag(draft.code.flag, live);
        break;
    default:
        StepOperands(draft, live, rewrite);
    }
}

void MaskSimplifier::ReadFlag(const QxOperand& flag, LiveSet& live) const
{
    if (BitOf(flag) != k_none)
        live.Add(BitOf(flag));
}

void MaskSimplifier::BeginBrackets(LiveSet& live)
{
    live.AddAll(m_behind.back());
    m_behind.pop_back();
}

/// `index`: that of the end. What the other points of the brackets still need goes onto the stack.
void MaskSimplifier::EndBrackets(std::size_t index, const LiveSet& live)
{
    m_behind.push_back(live);
    std::size_t depth = 1;
    std::size_t begin = index;
    while (depth > 0) {
        const QxCodeStep step = m_block.drafts[--begin].code.step;
        depth += step == QxCodeStep::EndIf ? 1 : 0;
        depth -= step == QxCodeStep::IfTrue || step == QxCodeStep::IfFalse ? 1 : 0;
    }
    const QxCode& guard = m_block.drafts[begin].code;
    if (guard.step != QxCodeStep::IfTrue || guard.copyFlag)
        return;
    for (std::size_t i = index + 1; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (!draft.row || draft.row->primitive != "machine:and")
            return;
        const QxOperand* operands = m_block.operands.data() + draft.first;
        if (operands[1].variable != guard.flag.variable ||
            operands[0].variable == guard.flag.variable)
            return;
        if (BitOf(operands[0]) != k_none)
            m_behind.back().Remove(BitOf(operands[0]));
    }
}

void MaskSimplifier::StepOperands(QxDraft& draft, LiveSet& live, Rewrite rewrite)
{
    QxCode& code = draft.code;
    const QxOperand* operands = m_block.operands.data() + draft.first;
    const char* letters = m_block.letters.data() + draft.first;
    if (rewrite == Rewrite::Yes && !m_behind.empty() && draft.row && draft.row->shaped &&
        operands[0].step != 0 && letters[0] == 'w' && BitOf(operands[0]) != k_none &&
        IsDeadElsewhere(BitOf(operands[0])))
        code.masked = code.all;
    const bool everywhere = code.step != QxCodeStep::GridIf;
    for (std::size_t k = 0; k < code.count; ++k)
        if (letters[k] == 'w' && everywhere && BitOf(operands[k]) != k_none)
            live.Remove(BitOf(operands[k]));
    for (std::size_t k = 0; k < code.count; ++k)
        if (letters[k] != 'w' && BitOf(operands[k]) != k_none)
            live.Add(BitOf(operands[k]));
    if (code.step == QxCodeStep::GridIf)
        ReadFlag(code.flag, live);
}

bool MaskSimplifier::IsDeadElsewhere(std::uint32_t bit) const
{
    return std::none_of(m_behind.begin(), m_behind.end(),
                        [bit](const LiveSet& behind) { return behind.Has(bit); });
}

void MaskSimplifier::DropShortBrackets()
{
    std::vector<std::uint32_t> newIndexes;
    std::vector<QxDraft> kept;
    newIndexes.reserve(m_block.drafts.size() + 1);
    kept.reserve(m_block.drafts.size());
    std::size_t dropUntil = 0;  // behind the end of brackets that vanish
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        newIndexes.push_back(static_cast<std::uint32_t>(kept.size()));
        const bool begins =
            draft.code.step == QxCodeStep::IfTrue || draft.code.step == QxCodeStep::IfFalse;
        if (begins && draft.code.target - i <= k_shortBrackets + 2 &&
            std::all_of(m_block.drafts.begin() + static_cast<std::ptrdiff_t>(i) + 1,
                        m_block.drafts.begin() + static_cast<std::ptrdiff_t>(draft.code.target) - 1,
                        [](const QxDraft& inner) {
                            return inner.code.step == QxCodeStep::Kernel &&
                                   inner.code.masked == inner.code.all && inner.row->shaped;
                        })) {
            dropUntil = draft.code.target;
            continue;
        }
        if (draft.code.step == QxCodeStep::EndIf && i + 1 == dropUntil)
            continue;
        kept.push_back(draft);
    }
    newIndexes.push_back(static_cast<std::uint32_t>(kept.size()));
    if (kept.size() == m_block.drafts.size())
        return;
    m_block.drafts = std::move(kept);
    Renumber(newIndexes);
}

void MaskSimplifier::Renumber(const std::vector<std::uint32_t>& newIndexes)
{
    for (QxDraft& draft : m_block.drafts)
        draft.code.target = newIndexes[draft.code.target];
}

}  // namespace

void QxSimplifyMasks(QxDraftBlock& block, const std::vector<QxStorage>& variables,
                     std::vector<std::uint32_t>& clears)
{
    MaskSimplifier(block, variables).Run(clears);
}
