// Whole stretches of code run strip by strip, loops included:
//
//     { t = s * 2 }  n = noise(t) for the grid;  u = Kd * 2 once;  { c = n * u }
// becomes
//     u = Kd * 2 once;  { t = s * 2;  n = noise(t);  c = n * u }
//
//     top: { f = x < 9; x = x + 1 where f }  u = f is true somewhere;  if u goto top
// becomes
//     { top: f = x < 9; x = x + 1 where f;  u = f is true somewhere in the strip;  if u goto top }
//
// What an instruction writes is then still in the first cache when the next one reads it, and a
// strip leaves a loop when the last of its own points does.
//
// A stretch is the longest that qualifies: each instruction computes a point from that point alone,
// or is a uniform one that may as well run before all of it, and jumps neither leave it nor enter
// its middle. Jumps may hang on uniform flags, and on flags that tell whether a varying one is true
// somewhere, if nothing else reads them: a point that has left a loop does not see how often the
// others go round. What disqualifies an instruction may cut off jumps elsewhere, so that the search
// begins anew until nothing changes. Held by the comparison with shared objects.

#include "machine/QxJoinRuns.h"

#include <algorithm>
#include <vector>

namespace {

// A file could have jumps that cross each other without end.
constexpr int k_mostRounds = 32;
constexpr std::size_t k_none = static_cast<std::size_t>(-1);

bool IsJump(QxCodeStep step)
{
    return step == QxCodeStep::Goto || step == QxCodeStep::GotoIfTrue ||
           step == QxCodeStep::GotoIfFalse;
}

bool IsConditional(QxCodeStep step)
{
    return step == QxCodeStep::GotoIfTrue || step == QxCodeStep::GotoIfFalse;
}

bool IsSomewhere(const QxDraft& draft)
{
    return draft.code.step == QxCodeStep::Grid && draft.row &&
           draft.row->primitive == "SET_UNIFORM_BOOL_FLAG";
}

/// Drafts from `begin` to before `end`.
struct Stretch {
    std::size_t begin;
    std::size_t end;
};

class RunJoiner {
public:
    RunJoiner(QxDraftBlock& block, const QxMachineVariables& variables)
        : m_block(block),
          m_drafts(block.drafts),
          m_excluded(block.drafts.size() + 1, 0),
          m_cut(block.drafts.size() + 1, 0),
          m_localFlags(variables.Count(), 0),
          m_readBy(variables.Count(), 0),
          m_writtenBy(variables.Count(), 0)
    {
    }
    void Run();

private:
    struct Span {
        const QxOperand* operands;
        const char* letters;
        std::size_t count;
    };
    [[nodiscard]] Span OperandsOf(const QxDraft& draft) const
    {
        return {m_block.operands.data() + draft.first, m_block.letters.data() + draft.first,
                draft.code.count};
    }
    void Exclude(std::size_t index)
    {
        m_changed = m_changed || !m_excluded[index];
        m_excluded[index] = 1;
    }
    void Cut(std::size_t index)
    {
        m_changed = m_changed || !m_cut[index];
        m_cut[index] = 1;
    }
    void ExcludeUnfit();
    [[nodiscard]] std::size_t ExcludeUnfitBrackets(std::size_t begin);
    [[nodiscard]] bool IsFit(const QxDraft& draft) const;
    void FindLocalFlags();
    void FindStretches();
    void CheckJumps();
    void CheckStretch(const Stretch& stretch);
    [[nodiscard]] bool MayRunBefore(const QxDraft& draft) const;
    void Touch(const QxDraft& draft);
    [[nodiscard]] bool IsWorthwhile(const Stretch& stretch) const;

    void Rewrite();
    void Emit(const Stretch& stretch);
    void EmitWithin(std::size_t index);
    QxDraft& AddStep(QxCodeStep step);

    QxDraftBlock& m_block;
    std::vector<QxDraft>& m_drafts;
    std::vector<char> m_excluded;  // by draft: stays outside of any stretch
    std::vector<char> m_cut;       // by draft: none goes on across its begin
    bool m_changed = false;
    std::vector<char> m_localFlags;  // by variable: read right behind where it is set, only there
    std::vector<Stretch> m_stretches;
    std::vector<std::size_t> m_stretchOf;  // by draft; none
    std::size_t m_touches = 0;             // number of the stretch at hand
    std::vector<std::size_t> m_readBy;     // by variable: the last stretch
    std::vector<std::size_t> m_writtenBy;  // the same
    std::vector<QxDraft> m_result;
    std::vector<std::uint32_t> m_inside;  // by draft: where jumps within its stretch find it
};

void RunJoiner::Run()
{
    ExcludeUnfit();
    FindLocalFlags();
    m_changed = true;
    for (int round = 0; m_changed; ++round) {
        if (round == k_mostRounds)
            return;
        m_changed = false;
        FindStretches();
        CheckJumps();
        for (const Stretch& stretch : m_stretches)
            CheckStretch(stretch);
    }
    std::erase_if(m_stretches, [this](const Stretch& stretch) { return !IsWorthwhile(stretch); });
    if (!m_stretches.empty())
        Rewrite();
}

// What no neighbourhood makes fit

void RunJoiner::ExcludeUnfit()
{
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        if (m_drafts[i].code.step == QxCodeStep::BeginParallel)
            i = ExcludeUnfitBrackets(i);
        else if (!IsFit(m_drafts[i]))
            m_excluded[i] = 1;
    }
}

/// All of them or none. Gives the place of the end.
std::size_t RunJoiner::ExcludeUnfitBrackets(std::size_t begin)
{
    const std::size_t end = m_drafts[begin].code.target - 1;
    bool fit = !m_drafts[begin].code.pointwise;
    for (std::size_t i = begin + 1; i < end; ++i)
        fit = fit && (!m_drafts[i].row || m_drafts[i].row->perPoint);
    if (!fit)
        for (std::size_t i = begin; i <= end; ++i)
            m_excluded[i] = 1;
    return end;
}

bool RunJoiner::IsFit(const QxDraft& draft) const
{
    const QxCode& code = draft.code;
    if (IsJump(code.step))
        return true;
    if (IsSomewhere(draft))
        return true;
    if (!draft.row || !draft.row->perPoint || code.whole)
        return false;
    if (code.step == QxCodeStep::Once)
        return true;
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k)
        if (QxIsWritten(span.letters[k]) && span.operands[k].step == 0)
            return false;
    return code.step == QxCodeStep::Grid || code.step == QxCodeStep::GridIf;
}

/// Flags that are set right in front of each jump that reads them.
void RunJoiner::FindLocalFlags()
{
    std::vector<char> targets(m_drafts.size() + 1, 0);
    for (const QxDraft& draft : m_drafts) {
        targets[draft.code.target] = 1;
        if (IsSomewhere(draft))
            m_localFlags[OperandsOf(draft).operands[0].variable] = 1;
    }
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        const QxDraft& draft = m_drafts[i];
        const Span span = OperandsOf(draft);
        for (std::size_t k = 0; k < span.count; ++k)
            if (span.letters[k] != 'w' || !IsSomewhere(draft))
                m_localFlags[span.operands[k].variable] = 0;
        const std::uint32_t flag = draft.code.flag.variable;
        if (IsConditional(draft.code.step)) {
            if (i == 0 || targets[i] || !IsSomewhere(m_drafts[i - 1]) ||
                OperandsOf(m_drafts[i - 1]).operands[0].variable != flag)
                m_localFlags[flag] = 0;
        } else if (draft.code.step != QxCodeStep::Kernel) {
            m_localFlags[flag] = 0;
        }
    }
}

// Stretches

void RunJoiner::FindStretches()
{
    m_stretches.clear();
    m_stretchOf.assign(m_drafts.size() + 1, k_none);
    const auto isOnce = [this](std::size_t i) { return m_drafts[i].code.step == QxCodeStep::Once; };
    for (std::size_t i = 0; i < m_drafts.size();) {
        if (m_excluded[i] || isOnce(i)) {
            ++i;
            continue;
        }
        Stretch stretch = {i, i + 1};
        while (stretch.end < m_drafts.size() && !m_excluded[stretch.end] && !m_cut[stretch.end])
            ++stretch.end;
        i = stretch.end;
        // Uniform instructions at its end are as well behind it.
        while (isOnce(stretch.end - 1))
            --stretch.end;
        std::fill(m_stretchOf.begin() + static_cast<std::ptrdiff_t>(stretch.begin),
                  m_stretchOf.begin() + static_cast<std::ptrdiff_t>(stretch.end),
                  m_stretches.size());
        m_stretches.push_back(stretch);
    }
}

/// Jumps stay within a stretch, or go to its begin from elsewhere.
void RunJoiner::CheckJumps()
{
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        const QxCode& code = m_drafts[i].code;
        if (!IsJump(code.step) && code.step != QxCodeStep::BeginLights &&
            code.step != QxCodeStep::EndLights)
            continue;
        const std::size_t from = m_stretchOf[i];
        const std::size_t to = m_stretchOf[code.target];
        if (from != k_none && (from == to || code.target == m_stretches[from].end))
            continue;
        if (from != k_none)
            Exclude(i);
        if (to != k_none && code.target != m_stretches[to].begin)
            Cut(code.target);
    }
}

/// Uniform instructions that cannot run before it, and flags that would be set for a strip and read
/// for the grid, do not stay in it.
void RunJoiner::CheckStretch(const Stretch& stretch)
{
    std::vector<int> spans(stretch.end - stretch.begin + 2, 0);  // of jumps, that begin or end here
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        if (!IsJump(m_drafts[i].code.step) || m_excluded[i])
            continue;
        ++spans[std::min<std::size_t>(i, m_drafts[i].code.target) - stretch.begin];
        --spans[std::max<std::size_t>(i, m_drafts[i].code.target) - stretch.begin];
    }
    ++m_touches;
    int open = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        const QxDraft& draft = m_drafts[i];
        open += spans[i - stretch.begin];
        if (IsSomewhere(draft)) {
            const std::uint32_t flag = OperandsOf(draft).operands[0].variable;
            const bool read = i + 1 < stretch.end && IsConditional(m_drafts[i + 1].code.step) &&
                              m_drafts[i + 1].code.flag.variable == flag && !m_excluded[i + 1];
            if (!m_localFlags[flag] || !read)
                Exclude(i);
        }
        if (draft.code.step != QxCodeStep::Once)
            Touch(draft);
        else if (open > 0 || !MayRunBefore(draft))
            Exclude(i);
    }
}

/// It and the instructions before it in the stretch, which were touched, do not disturb each other.
bool RunJoiner::MayRunBefore(const QxDraft& draft) const
{
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k) {
        const std::uint32_t variable = span.operands[k].variable;
        if (m_writtenBy[variable] == m_touches ||
            (QxIsWritten(span.letters[k]) && m_readBy[variable] == m_touches))
            return false;
    }
    return true;
}

void RunJoiner::Touch(const QxDraft& draft)
{
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k)
        (QxIsWritten(span.letters[k]) ? m_writtenBy : m_readBy)[span.operands[k].variable] =
            m_touches;
    if (!draft.row || draft.code.step == QxCodeStep::GridIf)
        m_readBy[draft.code.flag.variable] = m_touches;
}

/// More than brackets that stand there already.
bool RunJoiner::IsWorthwhile(const Stretch& stretch) const
{
    std::size_t parts = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        const QxCodeStep step = m_drafts[i].code.step;
        if (step == QxCodeStep::BeginParallel) {
            i = m_drafts[i].code.target - 1;
            ++parts;
        } else if (step == QxCodeStep::Grid || step == QxCodeStep::GridIf) {
            ++parts;
        }
    }
    return parts > 1;
}

// The new block

void RunJoiner::Rewrite()
{
    std::vector<std::uint32_t> newIndexes(m_drafts.size() + 1);
    std::vector<std::size_t> loose;  // in the result: outside of all stretches
    m_result.reserve(m_drafts.size() + 2 * m_stretches.size());
    m_inside.assign(m_drafts.size() + 1, 0);
    auto next = m_stretches.begin();
    for (std::size_t i = 0; i < m_drafts.size();) {
        newIndexes[i] = static_cast<std::uint32_t>(m_result.size());
        if (next != m_stretches.end() && i == next->begin) {
            Emit(*next);
            i = next++->end;
            continue;
        }
        loose.push_back(m_result.size());
        m_result.push_back(m_drafts[i++]);
    }
    newIndexes[m_drafts.size()] = static_cast<std::uint32_t>(m_result.size());
    for (const std::size_t i : loose)
        m_result[i].code.target = newIndexes[m_result[i].code.target];
    m_drafts = std::move(m_result);
}

void RunJoiner::Emit(const Stretch& stretch)
{
    for (std::size_t i = stretch.begin; i < stretch.end; ++i)
        if (m_drafts[i].code.step == QxCodeStep::Once)
            m_result.push_back(m_drafts[i]);
    const std::size_t begin = m_result.size();
    AddStep(QxCodeStep::BeginParallel);
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        m_inside[i] = static_cast<std::uint32_t>(m_result.size());
        EmitWithin(i);
    }
    m_inside[stretch.end] = static_cast<std::uint32_t>(m_result.size());
    for (std::size_t i = begin + 1; i < m_result.size(); ++i)
        m_result[i].code.target = m_inside[m_result[i].code.target];
    AddStep(QxCodeStep::EndParallel);
    m_result[begin].code.target = static_cast<std::uint32_t>(m_result.size());
}

void RunJoiner::EmitWithin(std::size_t index)
{
    const QxDraft& draft = m_drafts[index];
    switch (draft.code.step) {
    case QxCodeStep::Once:
    case QxCodeStep::BeginParallel:
    case QxCodeStep::EndParallel:
        return;
    case QxCodeStep::Grid:
        m_result.push_back(draft);
        m_result.back().code.step = QxCodeStep::Kernel;
        return;
    case QxCodeStep::GridIf:
        break;
    default:
        m_result.push_back(draft);
        return;
    }
    QxCode& condition = AddStep(QxCodeStep::IfTrue).code;
    condition.flag = draft.code.flag;
    condition.target = static_cast<std::uint32_t>(index + 1);
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k)
        if (QxIsWritten(span.letters[k]) && span.operands[k].variable == condition.flag.variable)
            condition.copyFlag = true;
    m_result.push_back(draft);
    m_result.back().code.step = QxCodeStep::Kernel;
    AddStep(QxCodeStep::EndIf);
}

/// One that the block did not have.
QxDraft& RunJoiner::AddStep(QxCodeStep step)
{
    QxDraft& draft = m_result.emplace_back();
    draft.code.step = step;
    return draft;
}

}  // namespace

void QxJoinRuns(QxDraftBlock& block, const QxMachineVariables& variables)
{
    RunJoiner(block, variables).Run();
}
