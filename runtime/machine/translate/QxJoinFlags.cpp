// Joins a flag with its copy:
//
//     f = x < 1 and g;  g = f;  if f ( ... )  f = f and not t;  g = g and not t
// becomes
//     g = x < 1 and g;  if g ( ... )  g = g and not t
//
// This is copy coalescing (Gregory Chaitin and others, "Register allocation via coloring", 1981),
// except that two variables that are live at the same time are joined too, if they are equal there:
// each write of `f` is followed by the copy or is next to the same operation on `g`, and other
// writes of `g` are where `f` is not live.
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxJoinFlags.h"

#include <algorithm>
#include <map>
#include <vector>

namespace {

// Bound the work for each copy.
constexpr std::size_t k_mostWrites = 16;
constexpr std::size_t k_mostBetween = 4;  // operations between two that change both flags alike

bool IsFlagOperation(const QxDraft& draft)
{
    if (draft.code.step != QxCodeStep::Kernel)
        return false;
    const SqxPrimitive primitive = draft.row->primitive;
    return primitive == SqxPrimitive::MACHINE_AND || primitive == SqxPrimitive::MACHINE_AND_NOT ||
           primitive == SqxPrimitive::MACHINE_OR || primitive == SqxPrimitive::MACHINE_OR_NOT;
}

class FlagJoiner {
public:
    FlagJoiner(QxDraftBlock& block, QxLiveness& liveness)
        : m_block(block),
          m_liveness(liveness),
          m_copies(block.drafts.size() + 1, 0),
          m_targets(block.drafts.size() + 1, 0)
    {
    }
    bool Run(std::size_t variables);

private:
    /// `flag` is to be replaced by `copy`.
    struct Pair {
        QxOperand flag;
        QxOperand copy;
        bool equal = true;
        std::vector<std::size_t> writes;   // of `flag`
        std::vector<std::size_t> dropped;  // drafts that the replacement makes superfluous
    };

    void FindPairs();
    void AddPair(std::size_t index);
    void FindWrites();
    void CheckStart();
    void CheckWritesOfFlag(Pair& pair);
    void CheckOtherWrites();
    [[nodiscard]] bool IsCopy(std::size_t index, const Pair& pair) const;
    [[nodiscard]] bool HasTwin(std::size_t index, const QxOperand& other) const;
    [[nodiscard]] bool IsNextTo(std::size_t index, std::size_t twin) const;
    void Join();
    [[nodiscard]] const QxOperand* OperandsOf(std::size_t index) const
    {
        return m_block.operands.data() + m_block.drafts[index].first;
    }

    QxDraftBlock& m_block;
    QxLiveness& m_liveness;
    std::vector<Pair> m_pairs;
    std::map<std::uint32_t, std::size_t> m_pairOf;     // by flag and by copy: index of the pair
    std::map<std::size_t, std::size_t> m_otherWrites;  // of copies, by draft: index of the pair
    std::vector<char> m_copies;                        // by draft: copies a flag of a pair
    std::vector<char> m_targets;                       // by draft: a jump leads to it
};

bool FlagJoiner::Run(std::size_t variables)
{
    FindPairs();
    if (m_pairs.empty())
        return false;
    FindWrites();
    CheckStart();
    for (Pair& pair : m_pairs)
        CheckWritesOfFlag(pair);
    CheckOtherWrites();
    std::erase_if(m_pairs, [](const Pair& pair) { return !pair.equal; });
    if (m_pairs.empty())
        return false;
    Join();
    m_block.MarkWrittenFlags(variables);
    return true;
}

/// Finds copies that are made at all points of a strip.
void FlagJoiner::FindPairs()
{
    std::size_t depth = 0;
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        if (QxIsJump(draft.code.step))
            m_targets[draft.code.target] = 1;
        if (QxIsCondition(draft.code.step))
            ++depth;
        else if (draft.code.step == QxCodeStep::EndIf)
            --depth;
        else if (depth == 0 && draft.code.step == QxCodeStep::Kernel &&
                 draft.row->primitive == SqxPrimitive::ASSIGN_BOOL_BOOL)
            AddPair(i);
    }
}

void FlagJoiner::AddPair(std::size_t index)
{
    const QxOperand copy = OperandsOf(index)[0];
    const QxOperand flag = OperandsOf(index)[1];
    if (copy.step == 0 || flag.step == 0 || copy.variable == flag.variable ||
        !m_liveness.Follows(copy) || !m_liveness.Follows(flag))
        return;
    const auto ofCopy = m_pairOf.find(copy.variable);
    const auto ofFlag = m_pairOf.find(flag.variable);
    if (ofCopy == m_pairOf.end() && ofFlag == m_pairOf.end()) {
        m_pairOf[copy.variable] = m_pairOf[flag.variable] = m_pairs.size();
        m_pairs.push_back({flag, copy, true, {}, {}});
    } else if (ofCopy == m_pairOf.end() || ofFlag == m_pairOf.end() ||
               ofCopy->second != ofFlag->second ||
               m_pairs[ofFlag->second].flag.variable != flag.variable) {
        return;
    }
    m_copies[index] = 1;
}

void FlagJoiner::FindWrites()
{
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxDraft& draft = m_block.drafts[i];
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k) {
            const std::uint32_t variable = m_block.operands[k].variable;
            const auto found = m_pairOf.find(variable);
            if (!SqxIsWritten(m_block.letters[k]) || found == m_pairOf.end())
                continue;
            Pair& pair = m_pairs[found->second];
            if (variable == pair.flag.variable)
                pair.writes.push_back(i);
            else if (!IsCopy(i, pair) && !HasTwin(i, pair.flag))
                m_otherWrites[i] = found->second;
            pair.equal = pair.equal && k == draft.first && pair.writes.size() <= k_mostWrites;
        }
    }
}

/// A flag that may be read before it is written is zero there, while the copy may not be.
void FlagJoiner::CheckStart()
{
    for (const std::uint32_t variable : m_liveness.ReadFirst()) {
        const auto found = m_pairOf.find(variable);
        if (found != m_pairOf.end() && m_pairs[found->second].flag.variable == variable)
            m_pairs[found->second].equal = false;
    }
}

/// Checks that the copy, or the same operation on the copy, is next to each write of the flag.
void FlagJoiner::CheckWritesOfFlag(Pair& pair)
{
    for (std::size_t i = 0; pair.equal && i < pair.writes.size(); ++i) {
        const std::size_t write = pair.writes[i];
        const QxDraft& draft = m_block.drafts[write];
        if (draft.code.step == QxCodeStep::Kernel && draft.row->shaped &&
            m_block.letters[draft.first] == 'w' && IsCopy(write + 1, pair))
            pair.dropped.push_back(write + 1);
        else if (HasTwin(write, pair.copy))
            pair.dropped.push_back(write);
        else
            pair.equal = false;
    }
}

/// Checks that the flag is not live where only the copy is written.
void FlagJoiner::CheckOtherWrites()
{
    if (m_otherWrites.empty())
        return;
    m_liveness.WalkBack([this](std::size_t index, std::size_t) {
        const auto found = m_otherWrites.find(index);
        if (found != m_otherWrites.end() && m_liveness.IsLive(m_pairs[found->second].flag))
            m_pairs[found->second].equal = false;
    });
}

bool FlagJoiner::IsCopy(std::size_t index, const Pair& pair) const
{
    return m_copies[index] != 0 && OperandsOf(index)[1].variable == pair.flag.variable;
}

/// True if the draft changes a flag by an operation, and the same operation changes `other` next to
/// it.
bool FlagJoiner::HasTwin(std::size_t index, const QxOperand& other) const
{
    if (!IsFlagOperation(m_block.drafts[index]))
        return false;
    const std::size_t first = index - std::min(index, k_mostBetween);
    const std::size_t end = std::min(index + k_mostBetween + 1, m_block.drafts.size());
    for (std::size_t i = first; i < end; ++i)
        if (i != index && IsFlagOperation(m_block.drafts[i]) &&
            OperandsOf(i)[0].variable == other.variable && IsNextTo(index, i))
            return true;
    return false;
}

/// True if both operations are the same, and nothing between them uses or changes their flags.
bool FlagJoiner::IsNextTo(std::size_t index, std::size_t twin) const
{
    const QxOperand source = OperandsOf(index)[1];
    const QxOperand results[] = {OperandsOf(index)[0], OperandsOf(twin)[0]};
    const auto isResult = [&](const QxOperand& operand) {
        return operand.variable == results[0].variable || operand.variable == results[1].variable;
    };
    if (m_block.drafts[index].row != m_block.drafts[twin].row ||
        OperandsOf(twin)[1].variable != source.variable || isResult(source))
        return false;
    const std::size_t end = std::max(index, twin);
    for (std::size_t i = std::min(index, twin) + 1; i <= end; ++i) {
        if (m_targets[i])
            return false;
        if (i == end)
            break;
        if (!IsFlagOperation(m_block.drafts[i]) || isResult(OperandsOf(i)[0]) ||
            isResult(OperandsOf(i)[1]) || OperandsOf(i)[0].variable == source.variable)
            return false;
    }
    return true;
}

void FlagJoiner::Join()
{
    std::vector<char> kept(m_block.drafts.size(), 1);
    std::map<std::uint32_t, std::uint32_t> replacements;
    for (const Pair& pair : m_pairs) {
        replacements[pair.flag.variable] = pair.copy.variable;
        m_liveness.Replace(pair.flag, pair.copy);
        for (const std::size_t index : pair.dropped)
            kept[index] = 0;
    }
    const auto replace = [&replacements](QxOperand& operand) {
        const auto found = replacements.find(operand.variable);
        if (found != replacements.end())
            operand.variable = found->second;
    };
    for (QxOperand& operand : m_block.operands)
        replace(operand);
    for (QxDraft& draft : m_block.drafts)
        replace(draft.code.flag);
    m_liveness.Renumber(m_block.Keep(kept));
}

}  // namespace

bool QxJoinFlags(QxDraftBlock& block, QxLiveness& liveness, std::size_t variables)
{
    return FlagJoiner(block, liveness).Run(variables);
}
