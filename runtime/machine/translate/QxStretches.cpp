// A stretch is a maximal sequence of instructions that can run strip by strip: each instruction
// computes each point only from that point, or is a uniform instruction that can be hoisted before
// the stretch. Jumps in it lead into it or to its end, and other jumps enter it only at its start.
// `EVAL_LIGHTS_FOR_P` and `ambient()`, which light the whole grid, are hoisted in the same way, if
// also no earlier instruction of the stretch uses lights or writes a variable that lights may read.
// Jumps may test uniform flags. They may also test reductions of a varying flag ("true at any
// point") that nothing else reads: a reduction per strip is then equivalent, since points that have
// left a loop are not affected by its further iterations. Excluding an instruction may invalidate
// jumps elsewhere, so the search is repeated until nothing changes. An excluded instruction stays
// excluded; if the search needs too many rounds, there are no stretches.
//
// Braces are parallel brackets:
//
//     { a }  u = x * 2 (uniform)  { b }   one stretch, if { a } neither reads u nor writes u or x
//     { a }  c = ambient() for the grid  { b }    the same
//     { a }  n = Du(a) for the grid       none across it: derivatives read neighbouring points
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxStretches.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "sqx/SqxPredefined.h"

namespace {

// Bounds the work for files with many crossing jumps, which need a round each.
constexpr int k_mostRounds = 32;
constexpr std::size_t k_none = static_cast<std::size_t>(-1);

bool IsLighting(const QxDraft& draft)
{
    return draft.row && (draft.row->primitive == SqxPrimitive::EVAL_LIGHTS_FOR_P ||
                         (draft.row->primitive == SqxPrimitive::CALL_PRIM_AMBIENT &&
                          draft.code.step == QxCodeStep::Grid));
}

bool IsFlagReduction(const QxDraft& draft)
{
    return draft.code.step == QxCodeStep::Grid && draft.row &&
           draft.row->primitive == SqxPrimitive::SET_UNIFORM_BOOL_FLAG;
}

class StretchFinder {
public:
    StretchFinder(const QxDraftBlock& block, const QxMachineVariables& variables)
        : m_block(block),
          m_variables(variables),
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
    void RecordAccess(const QxDraft& draft);
    [[nodiscard]] bool MayMatterToLights(std::uint32_t variable) const;
    [[nodiscard]] bool IsWorthwhile(const QxStretch& stretch) const;

    const QxDraftBlock& m_block;
    const QxMachineVariables& m_variables;
    const std::vector<QxDraft>& m_drafts;
    std::vector<char> m_excluded;  // by draft: is outside any stretch
    std::vector<char> m_cut;       // by draft: no stretch extends across its start
    bool m_changed = false;
    std::vector<char> m_localFlags;  // by variable: see `FindLocalFlags`
    std::vector<QxStretch> m_stretches;
    std::vector<std::size_t> m_stretchOf;  // by draft, or k_none
    std::size_t m_stretchNumber = 0;       // counts the checked stretches
    bool m_usesLights = false;  // the current stretch has used lights or written what they may read
    std::vector<std::size_t> m_readBy;     // by variable: the last stretch that reads it
    std::vector<std::size_t> m_writtenBy;  // by variable: the last stretch that writes it
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

// Instructions that never qualify

void StretchFinder::ExcludeUnfit()
{
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        if (m_drafts[i].code.step == QxCodeStep::BeginParallel)
            i = ExcludeUnfitBrackets(i);
        else if (!IsFit(m_drafts[i]))
            m_excluded[i] = 1;
    }
}

/// Excludes a whole pair of brackets if it runs point by point, or if any instruction in it does
/// not qualify. Returns the index of its end.
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
    if (QxIsGoto(code.step))
        return true;
    if (IsFlagReduction(draft) || IsLighting(draft))
        return true;
    if (!draft.row || !draft.row->perPoint || code.whole)
        return false;
    if (code.step == QxCodeStep::Once)
        return true;
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k)
        if (SqxIsWritten(span.letters[k]) && span.operands[k].step == 0)
            return false;
    return code.step == QxCodeStep::Grid || code.step == QxCodeStep::GridIf;
}

/// Finds the flags that only reductions write and only jumps read, each jump right after a
/// reduction that writes its flag.
void StretchFinder::FindLocalFlags()
{
    std::vector<char> targets(m_drafts.size() + 1, 0);
    for (const QxDraft& draft : m_drafts) {
        targets[draft.code.target] = 1;
        if (IsFlagReduction(draft))
            m_localFlags[OperandsOf(draft).operands[0].variable] = 1;
    }
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        const QxDraft& draft = m_drafts[i];
        const Span span = OperandsOf(draft);
        for (std::size_t k = 0; k < span.count; ++k)
            if (span.letters[k] != 'w' || !IsFlagReduction(draft))
                m_localFlags[span.operands[k].variable] = 0;
        const std::uint32_t flag = draft.code.flag.variable;
        if (QxIsConditionalJump(draft.code.step)) {
            if (i == 0 || targets[i] || !IsFlagReduction(m_drafts[i - 1]) ||
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
    const auto isToHoist = [this](std::size_t i) { return QxIsToHoist(m_drafts[i]); };
    for (std::size_t i = 0; i < m_drafts.size();) {
        if (m_excluded[i] || isToHoist(i)) {
            ++i;
            continue;
        }
        QxStretch stretch = {i, i + 1};
        while (stretch.end < m_drafts.size() && !m_excluded[stretch.end] && !m_cut[stretch.end])
            ++stretch.end;
        i = stretch.end;
        // Instructions to hoist at the end need not be in the stretch.
        while (isToHoist(stretch.end - 1))
            --stretch.end;
        std::fill(m_stretchOf.begin() + static_cast<std::ptrdiff_t>(stretch.begin),
                  m_stretchOf.begin() + static_cast<std::ptrdiff_t>(stretch.end),
                  m_stretches.size());
        m_stretches.push_back(stretch);
    }
}

/// Excludes jumps that leave a stretch other than to its end. If a jump from outside leads into the
/// middle of a stretch, cuts the stretch at the target.
void StretchFinder::CheckJumps()
{
    for (std::size_t i = 0; i < m_drafts.size(); ++i) {
        const QxCode& code = m_drafts[i].code;
        if (!QxIsJump(code.step))
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

/// Excludes instructions to hoist that must not run before the stretch, and reductions of flags
/// whose result would be computed for a strip but read for the grid.
void StretchFinder::CheckStretch(const QxStretch& stretch)
{
    std::vector<int> spans(stretch.end - stretch.begin + 2, 0);  // change of the number of jumps
                                                                 // across this place
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        if (!QxIsGoto(m_drafts[i].code.step) || m_excluded[i])
            continue;
        ++spans[std::min<std::size_t>(i, m_drafts[i].code.target) - stretch.begin];
        --spans[std::max<std::size_t>(i, m_drafts[i].code.target) - stretch.begin];
    }
    ++m_stretchNumber;
    m_usesLights = false;
    int open = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        const QxDraft& draft = m_drafts[i];
        open += spans[i - stretch.begin];
        if (IsFlagReduction(draft)) {
            const std::uint32_t flag = OperandsOf(draft).operands[0].variable;
            const bool read = i + 1 < stretch.end &&
                              QxIsConditionalJump(m_drafts[i + 1].code.step) &&
                              m_drafts[i + 1].code.flag.variable == flag && !m_excluded[i + 1];
            if (!m_localFlags[flag] || !read)
                Exclude(i);
        }
        if (!QxIsToHoist(draft))
            RecordAccess(draft);
        else if (open > 0 || !MayRunBefore(draft))
            Exclude(i);
    }
}

/// True if `draft` has no data dependence on earlier instructions that stay in the stretch, so it
/// can be hoisted.
bool StretchFinder::MayRunBefore(const QxDraft& draft) const
{
    if (IsLighting(draft) && m_usesLights)
        return false;
    const Span span = OperandsOf(draft);
    for (std::size_t k = 0; k < span.count; ++k) {
        const std::uint32_t variable = span.operands[k].variable;
        if (m_writtenBy[variable] == m_stretchNumber ||
            (SqxIsWritten(span.letters[k]) && m_readBy[variable] == m_stretchNumber))
            return false;
    }
    return true;
}

void StretchFinder::RecordAccess(const QxDraft& draft)
{
    const Span span = OperandsOf(draft);
    m_usesLights = m_usesLights || (draft.row && draft.row->readsLights);
    for (std::size_t k = 0; k < span.count; ++k) {
        const bool written = SqxIsWritten(span.letters[k]);
        const std::uint32_t variable = span.operands[k].variable;
        (written ? m_writtenBy : m_readBy)[variable] = m_stretchNumber;
        m_usesLights = m_usesLights || (written && MayMatterToLights(variable));
    }
    if (!draft.row || draft.code.step == QxCodeStep::GridIf)
        m_readBy[draft.code.flag.variable] = m_stretchNumber;
}

/// True if lights may read the variable: any variable except locals, temporaries and the results
/// `Ci` and `Oi`.
bool StretchFinder::MayMatterToLights(std::uint32_t variable) const
{
    const QxStorage& storage = m_variables[variable];
    if (storage.kind == QxStorage::Kind::Predefined) {
        const std::string_view name = k_sqxPredefined[storage.number].name;
        return name != "Ci" && name != "Oi";
    }
    return storage.kind != QxStorage::Kind::Local && storage.kind != QxStorage::Kind::Borrowed;
}

/// True if the stretch would join at least two parts: pairs of brackets, or instructions for the
/// grid that are not hoisted.
bool StretchFinder::IsWorthwhile(const QxStretch& stretch) const
{
    std::size_t parts = 0;
    for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
        const QxCodeStep step = m_drafts[i].code.step;
        if (QxIsToHoist(m_drafts[i]))
            continue;
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

bool QxIsToHoist(const QxDraft& draft)
{
    return draft.code.step == QxCodeStep::Once || IsLighting(draft);
}

std::vector<QxStretch> QxFindStretches(const QxDraftBlock& block,
                                       const QxMachineVariables& variables)
{
    return StretchFinder(block, variables).Find();
}
