// A stretch is the longest that qualifies: each instruction computes a point from that point alone,
// or is a uniform one that may as well run before all of it, and jumps neither leave it nor enter
// its middle. Jumps may hang on uniform flags, and on flags that tell whether a varying one is true
// somewhere, if nothing else reads them: a point that has left a loop does not see how often the
// others go round. What disqualifies an instruction may cut off jumps elsewhere, so that the search
// begins anew until nothing changes: what is excluded once stays so, and the largest stretches that
// agree with each other are left.
//
//     { a }  u = x * 2 once  { b }        one stretch, if { a } neither reads u nor writes u or x
//     { a }  n = Du(a) for the grid       none across it: the derivative looks at neighbours
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxStretches.h"

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

class StretchFinder {
public:
    StretchFinder(const QxDraftBlock& block, const QxMachineVariables& variables)
        : m_block(block),
          m_drafts(block.drafts),
          m_excluded(block.drafts.size() + 1, 0),
          m_cut(block.drafts.size() + 1, 0),
          m_localFlags(variables.Count(), 0),
          m_readBy(variables.Count(), 0),
          m_writtenBy(variables.Count(), 0)
    {
    }
    [[nodiscard]] std::vector<QxStretch> Find();

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
    void CheckStretch(const QxStretch& stretch);
    [[nodiscard]] bool MayRunBefore(const QxDraft& draft) const;
    void Touch(const QxDraft& draft);
    [[nodiscard]] bool IsWorthwhile(const QxStretch& stretch) const;

    const QxDraftBlock& m_block;
    const std::vector<QxDraft>& m_drafts;
    std::vector<char> m_excluded;  // by draft: stays outside of any stretch
    std::vector<char> m_cut;       // by draft: none goes on across its begin
    bool m_changed = false;
    std::vector<char> m_localFlags;  // by variable: read right behind where it is set, only there
    std::vector<QxStretch> m_stretches;
    std::vector<std::size_t> m_stretchOf;  // by draft; none
    std::size_t m_touches = 0;             // number of the stretch at hand
    std::vector<std::size_t> m_readBy;     // by variable: the last stretch
    std::vector<std::size_t> m_writtenBy;  // the same
};

std::vector<QxStretch> StretchFinder::Find()
{
    ExcludeUnfit();
    FindLocalFlags();
    m_changed = true;
    for (int round = 0; m_changed; ++round) {
        if (round == k_mostRounds)
            return {};
        m_changed = false;
        FindStretches();
        CheckJumps();
        for (const QxStretch& stretch : m_stretches)
            CheckStretch(stretch);
    }
    std::erase_if(m_stretches, [this](const QxStretch& stretch) { return !IsWorthwhile(stretch); });
    return m_stretches;
}

// What no neighbourhood makes fit

void StretchFinder::ExcludeUnfit()
{
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        if (m_drafts[i].code.step == QxCodeStep::BeginParallel)
            i = ExcludeUnfitBrackets(i);
        else if (!IsFit(m_drafts[i]))
            m_excluded[i] = 1;
    }
}

/// All of them or none. Gives the place of the end.
std::size_t StretchFinder::ExcludeUnfitBrackets(std::size_t begin)
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

bool StretchFinder::IsFit(const QxDraft& draft) const
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
void StretchFinder::FindLocalFlags()
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

void StretchFinder::FindStretches()
{
    m_stretches.clear();
    m_stretchOf.assign(m_drafts.size() + 1, k_none);
    const auto isOnce = [this](std::size_t i) { return m_drafts[i].code.step == QxCodeStep::Once; };
    for (std::size_t i = 0; i < m_drafts.size();) {
        if (m_excluded[i] || isOnce(i)) {
            ++i;
            continue;
        }
        QxStretch stretch = {i, i + 1};
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
void StretchFinder::CheckJumps()
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
void StretchFinder::CheckStretch(const QxStretch& stretch)
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
bool StretchFinder::MayRunBefore(const QxDraft& draft) const
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

void StretchFinder::Touch(const QxDraft& draft)
{
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k)
        (QxIsWritten(span.letters[k]) ? m_writtenBy : m_readBy)[span.operands[k].variable] =
            m_touches;
    if (!draft.row || draft.code.step == QxCodeStep::GridIf)
        m_readBy[draft.code.flag.variable] = m_touches;
}

/// More than brackets that stand there already.
bool StretchFinder::IsWorthwhile(const QxStretch& stretch) const
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

}  // namespace

std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                       const QxMachineVariables& variables)
{
    return StretchFinder(block, variables).Find();
}
