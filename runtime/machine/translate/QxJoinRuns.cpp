// Makes whole stretches of code, including loops, run strip by strip. Braces are parallel brackets:
//
//     { t = s * 2 }  n = noise(t) for the grid;  u = Kd * 2 once;  { c = n * u }
// becomes
//     u = Kd * 2 once;  { t = s * 2;  n = noise(t);  c = n * u }
//
//     top: { f = x < 9; x = x + 1 where f }  u = f is true somewhere;  if u goto top
// becomes
//     { top: f = x < 9; x = x + 1 where f;  u = f is true somewhere in the strip;  if u goto top }
//
// A value is then still in the first-level cache when the next instruction reads it, and a strip
// leaves a loop when its own last point does.
//
// This is loop fusion and strip mining (Randy Allen, Ken Kennedy, "Optimizing Compilers for Modern
// Architectures", 2001). The difference is that a loop may depend on a reduction over all points,
// which becomes a reduction over the strip: further iterations do not affect points that have left
// the loop.
//
// QxStretches.cpp defines a stretch. Tested by tests/machine/DraftPassesTest.cpp, and with whole
// shaders by tests/host/AgreementTest.cpp.

#include "machine/translate/QxJoinRuns.h"

#include <utility>

#include "machine/translate/QxStretches.h"

namespace {

class Joiner {
public:
    Joiner(QxDraftBlock& block, std::vector<QxStretch> stretches)
        : m_drafts(block.drafts),
          m_stretches(std::move(stretches))
    {
    }
    void Run();

private:
    void Emit(const QxStretch& stretch);
    void EmitWithin(std::size_t index);
    QxDraft& AddStep(QxCodeStep step);

    std::vector<QxDraft>& m_drafts;
    const std::vector<QxStretch> m_stretches;
    std::vector<QxDraft> m_result;
    std::vector<std::uint32_t> m_inside;  // by draft: its new index, for jumps within its stretch
};

void Joiner::Run()
{
    std::vector<std::uint32_t> newIndexes(m_drafts.size() + 1);
    std::vector<std::size_t> loose;  // in the result: drafts outside all stretches
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

void Joiner::Emit(const QxStretch& stretch)
{
    for (std::size_t i = stretch.begin; i < stretch.end; ++i)
        if (QxIsToHoist(m_drafts[i]))
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

void Joiner::EmitWithin(std::size_t index)
{
    const QxDraft& draft = m_drafts[index];
    if (QxIsToHoist(draft))
        return;
    switch (draft.code.step) {
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
    m_result.push_back(draft);
    m_result.back().code.step = QxCodeStep::Kernel;
    AddStep(QxCodeStep::EndIf);
}

/// Adds a bracket to the result.
QxDraft& Joiner::AddStep(QxCodeStep step)
{
    QxDraft& draft = m_result.emplace_back();
    draft.code.step = step;
    return draft;
}

}  // namespace

void QxJoinRuns(QxDraftBlock& block, const QxMachineVariables& variables)
{
    std::vector<QxStretch> stretches = QxFindStretches(block, variables);
    if (!stretches.empty())
        Joiner(block, std::move(stretches)).Run();
}
