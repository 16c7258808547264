// Finds the locals and temporaries that a C++ compiler can keep in a register.
//
//     {; x = p + 1; Ci = x; }                                 yes: x is local to each point
//     {; x = p + 1; }; {; Ci = x; }                           no: x is live between runs
//     {; if f L; x = p; endif L; Ci = x; }                    no: a point may read an older x
//
// A bracket is a parallel run or a guard in one. A write is valid within the innermost bracket
// around it. A read does not let the value escape if the bracket of some preceding write is still
// open; any other read does, and so does a write outside of parallel runs. Writes before a label do
// not count for the reads after it, since a jump may skip them.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcConvertTmpVarDetail, ...).

#include "optimizer/SlcConvertTmpVarDetail.h"

#include <vector>

#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcDefUse.h"

namespace {

/// Finds the variables with a value that may be read at another point, or outside of the parallel
/// run that writes it, and those that are written outside of parallel runs.
class PointValues : public SlcOperandWalker {
public:
    explicit PointValues(int variables) : m_writes(variables, -1), m_escapes(variables, false) {}

    [[nodiscard]] bool Escapes(int number) const { return m_escapes[number]; }

private:
    void Read(SlcOperand& operand) override
    {
        const int number = SlcVariableNumbers::Of(operand);
        if (number >= 0 && !IsWritten(number))
            m_escapes[number] = true;
    }
    void Write(SlcOperand& operand) override
    {
        const int number = SlcVariableNumbers::Of(operand);
        if (number < 0)
            return;
        if (m_open.empty())
            m_escapes[number] = true;
        else if (!IsWritten(number))
            m_writes[number] = m_open.back();
    }

    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcBeginParallelICode>) override { Open(); }
    void Case(SlcPtr<SlcEndParallelICode>) override { Close(); }
    void Case(SlcPtr<SlcIfICode> code) override
    {
        SlcOperandWalker::Case(code);
        if (!m_open.empty())
            Open();
    }
    void Case(SlcPtr<SlcEndIfICode>) override
    {
        if (!m_open.empty())
            Close();
    }
    /// A jump may reach the label without executing the writes before it.
    void Case(SlcPtr<SlcLabelICode>) override
    {
        for (int& bracket : m_open) {
            m_isOpen[bracket] = false;
            bracket = NewBracket();
        }
    }

    void Open() { m_open.push_back(NewBracket()); }
    void Close()
    {
        m_isOpen[m_open.back()] = false;
        m_open.pop_back();
    }
    int NewBracket()
    {
        m_isOpen.push_back(true);
        return static_cast<int>(m_isOpen.size()) - 1;
    }
    [[nodiscard]] bool IsWritten(int number) const
    {
        return m_writes[number] >= 0 && m_isOpen[m_writes[number]];
    }

    std::vector<bool> m_isOpen;   // by bracket, which is a parallel run or a guard inside one
    std::vector<int> m_open;      // enclosing brackets, from the outermost
    std::vector<int> m_writes;    // by variable: bracket of its first valid write, else of another
                                  // write, or -1
    std::vector<bool> m_escapes;  // by variable
};

bool IsFollowedLocal(const SlcLexType& variable)
{
    const SlcDetailNode& detail = *variable.GetDetail();
    return variable.GetStorage()->IsLocal() && (!detail.IsUniform() || detail.IsTempUniform());
}

bool FitsRegister(const SlcTypeNode& type)
{
    return !type.IsArrayType() && !type.IsArrayRefType() && !type.IsStringType();
}

}  // namespace

void SlcConvertTmpVarDetail(const SlcListICode& list, const SlcVariableNumbers& variables)
{
    PointValues values(variables.Count());
    for (const auto& code : list.m_icodes)
        values.Visit(code);
    for (int number = 0; number < variables.Count(); ++number) {
        const SlcOperand& variable = variables.Variable(number);
        if (!IsFollowedLocal(*variable))
            continue;
        const bool once = FitsRegister(*variable->GetType()) && !values.Escapes(number);
        variable->SetDetail(once ? SlcDetailNode::ATempUniform() : SlcDetailNode::AVarying());
    }
}

void SlcForgetTmpVarDetail(const SlcVariableNumbers& variables)
{
    for (int number = 0; number < variables.Count(); ++number)
        if (variables.Variable(number)->GetDetail()->IsTempUniform())
            variables.Variable(number)->SetDetail(SlcDetailNode::AUnknown());
}
