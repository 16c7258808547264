// Brackets run strip by strip, so a value that no instruction outside of them needs has to be
// stored for one strip only:
//
//     { x = s * 2;  y = x + t }  z = Du(y) for the grid
// becomes
//     { x' = s * 2;  y = x' + t }  z = Du(y) for the grid
//
// where x' has room for one strip, which all strips reuse. Its values then stay in the first-level
// cache. The compiler reuses one temporary for unrelated values. So variables are renamed
// separately for each pair of brackets: a variable that must stay in other brackets, or that an
// instruction for the whole grid uses elsewhere, can still be replaced in this pair. This is array
// contraction (Vivek Sarkar, Guang Gao, "Optimization of array accesses by collective loop
// transformations", 1991) to strips instead of to single values.
//
// Each instruction has a fixed cost per strip of some nanoseconds, so strips are longer where the
// first-level cache has room for their values. Brackets with conditions or loops keep short strips,
// in which code more often has no active point and is then skipped.
//
// A kernel that does not work point by point may read other points, so its operands are not
// replaced; the reduction of a flag, which here reads only its strip, is an exception.
//
// Tested by tests/machine/DraftPassesTest.cpp, and with whole shaders by
// tests/host/AgreementTest.cpp.

#include "machine/translate/QxStripLocals.h"

#include <algorithm>
#include <vector>

namespace {

constexpr std::uint32_t k_none = static_cast<std::uint32_t>(-1);
// The rest of a first-level cache of 32 KiB is for variables of the grid.
constexpr std::size_t k_mostBytes = std::size_t{20} << 10;

/// A pair of parallel brackets, as indexes of drafts.
struct Brackets {
    std::size_t begin;
    std::size_t end;
    std::vector<std::uint32_t> fixed;  // variables that must stay
};

class StripLocals {
public:
    StripLocals(QxDraftBlock& block, QxLiveness& liveness, QxMachineVariables& variables)
        : m_block(block),
          m_liveness(liveness),
          m_variables(variables),
          m_slots(variables.Count(), k_none),
          m_fixedIn(variables.Count(), k_none)
    {
    }
    void Run();

private:
    void FindBrackets();
    void Fix(Brackets& brackets);
    void Rename(std::uint32_t number);
    [[nodiscard]] std::int32_t StripLength(const Brackets& brackets) const;
    template <class Visit>
    void ForOperands(const Brackets& brackets, const Visit& visit);

    QxDraftBlock& m_block;
    QxLiveness& m_liveness;
    QxMachineVariables& m_variables;
    std::vector<Brackets> m_brackets;
    std::vector<std::uint32_t>
        m_bracketsAt;  // by draft: index of the brackets that it begins or ends, or k_none
    // For the current brackets:
    std::vector<std::uint32_t> m_slots;  // by variable: its replacement, or k_none
    std::vector<QxOperand> m_used;       // the variables that replace others
    std::size_t m_count[k_qxStoredKinds] = {};
    std::vector<std::uint32_t> m_fixedIn;  // by variable: the last brackets in which it must stay
};

void StripLocals::Run()
{
    FindBrackets();
    if (m_brackets.empty())
        return;
    m_liveness.WalkBack([this](std::size_t index, std::size_t) {
        if (m_bracketsAt[index] != k_none)
            Fix(m_brackets[m_bracketsAt[index]]);
    });
    for (std::uint32_t i = 0; i < m_brackets.size(); ++i)
        Rename(i);
}

void StripLocals::FindBrackets()
{
    m_bracketsAt.assign(m_block.drafts.size(), k_none);
    for (std::size_t i = 0; i < m_block.drafts.size(); ++i) {
        const QxCode& code = m_block.drafts[i].code;
        if (code.step != QxCodeStep::BeginParallel || code.pointwise)
            continue;
        const std::size_t end = code.target - 1;
        m_bracketsAt[i] = m_bracketsAt[end] = static_cast<std::uint32_t>(m_brackets.size());
        m_brackets.push_back({i, end, {}});
    }
}

/// Calls `visit(draft, operand)` for each operand and each flag of a condition or jump within the
/// brackets.
template <class Visit>
void StripLocals::ForOperands(const Brackets& brackets, const Visit& visit)
{
    for (std::size_t i = brackets.begin + 1; i < brackets.end; ++i) {
        QxDraft& draft = m_block.drafts[i];
        for (std::size_t k = draft.first; k < draft.first + draft.code.count; ++k)
            visit(draft, m_block.operands[k]);
        if (QxIsCondition(draft.code.step) || QxIsConditionalJump(draft.code.step))
            visit(draft, draft.code.flag);
    }
}

/// Records the variables that must stay: those that are live after the current draft, which is the
/// start or the end of the brackets, uniform variables, and the operands of kernels that may read
/// other points.
void StripLocals::Fix(Brackets& brackets)
{
    ForOperands(brackets, [&](const QxDraft& draft, const QxOperand& operand) {
        const bool fits = !draft.row || draft.row->perPoint ||
                          draft.row->primitive == SqxPrimitive::SET_UNIFORM_BOOL_FLAG;
        if (!fits || operand.step == 0 || m_liveness.IsLive(operand))
            brackets.fixed.push_back(operand.variable);
    });
}

void StripLocals::Rename(std::uint32_t number)
{
    const Brackets& brackets = m_brackets[number];
    for (const std::uint32_t variable : brackets.fixed)
        m_fixedIn[variable] = number;
    std::fill(std::begin(m_count), std::end(m_count), 0);
    m_used.clear();
    std::vector<std::uint32_t> renamed;
    ForOperands(brackets, [&](const QxDraft&, QxOperand& operand) {
        const std::uint32_t variable = operand.variable;
        if (m_fixedIn[variable] == number)
            return;
        if (m_slots[variable] == k_none) {
            renamed.push_back(variable);
            m_slots[variable] = m_variables.StripLocal(
                operand.stored, m_count[static_cast<std::size_t>(operand.stored)]++);
            m_used.push_back(m_variables.OperandOf(m_slots[variable]));
        }
        operand.variable = m_slots[variable];
    });
    for (const std::uint32_t variable : renamed)
        m_slots[variable] = k_none;
    QxDraft& begin = m_block.drafts[brackets.begin];
    begin.first = m_block.operands.size();
    begin.code.count = static_cast<std::uint32_t>(m_used.size());
    m_block.operands.insert(m_block.operands.end(), m_used.begin(), m_used.end());
    m_block.letters.append(m_used.size(), 'w');
    begin.code.number = StripLength(brackets);
}

std::int32_t StripLocals::StripLength(const Brackets& brackets) const
{
    for (std::size_t i = brackets.begin + 1; i < brackets.end; ++i)
        if (!m_block.drafts[i].row)
            return k_qxMachineStrip;
    std::size_t bytes = 0;
    for (const QxOperand& operand : m_used)
        bytes += QxBytesOf(operand.stored);
    unsigned int length = k_qxLongestStrip;
    while (length > k_qxMachineStrip && length * bytes > k_mostBytes)
        length /= 2;
    return static_cast<std::int32_t>(length);
}

}  // namespace

void QxUseStripLocals(QxDraftBlock& block, QxLiveness& liveness, QxMachineVariables& variables)
{
    StripLocals(block, liveness, variables).Run();
}
