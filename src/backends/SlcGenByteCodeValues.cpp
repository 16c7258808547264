// The values of one code block: names, operands, literals and jumps. A jump forward leaves a gap
// that is filled once its label has a place:
//
//     goto L; x = 1; L:        GOTO ? ASSIGN x 1       and at the end        GOTO 5 ASSIGN x 1
//
// Every value is checked to fit its 16 bits; what does not is one report for each kind of value.
//
// Tested by tests/backends/GenByteCodeTest.cpp.

#include <limits>

#include "backends/SlcByteCode.h"
#include "backends/SlcGenByteCode.h"
#include "icode/SlcICodeName.h"
#include "support/reports/SlcSemanticError.h"

namespace {

constexpr std::size_t k_highestValue = std::numeric_limits<std::int16_t>::max();

}  // namespace

void SlcGenByteCode::ResetCode()
{
    m_code.clear();
    m_labels.clear();
    m_unknownLabels.clear();
    m_comment = nullptr;
}

std::int16_t SlcGenByteCode::Fit(std::size_t value, std::string_view what)
{
    if (value <= k_highestValue)
        return static_cast<std::int16_t>(value);
    if (m_reported.emplace(what).second)
        Report(std::string(what) + ' ' + std::to_string(value) +
               " does not fit into byte-code, whose largest number is " +
               std::to_string(k_highestValue) + ", use '--dso'");
    return 0;
}

void SlcGenByteCode::AddInstr(std::string_view name)
{
    m_code.push_back(SlcByteCode::GetInstrNb(name));
}

void SlcGenByteCode::AddConst(int value, std::string_view what)
{
    m_code.push_back(value == -1 ? std::int16_t{-1} : Fit(static_cast<std::size_t>(value), what));
}

void SlcGenByteCode::AddVar(const SlcOperand& operand)
{
    if (operand->m_index < 0)
        ReportUnnumbered(operand);
    AddConst(operand->m_index, "Variable number");
}

void SlcGenByteCode::AddVars(const std::deque<SlcOperand>& operands)
{
    for (const SlcOperand& operand : operands)
        AddVar(operand);
}

void SlcGenByteCode::AddVarIfSet(const SlcOperand& operand)
{
    if (operand)
        AddVar(operand);
}

/// An operand that no section declared: the file would not load, so this is an error.
void SlcGenByteCode::ReportUnnumbered(const SlcOperand& operand)
{
    std::string text = "Error in AddVar, unknown ";
    if (operand->IsFloat())
        text += "float: " + std::to_string(operand->GetFloat());
    else if (operand->IsString())
        text += "string: " + operand->GetString();
    else if (operand->IsIdent())
        text += "ident: " + operand->GetName();
    else
        text += "element.";
    Report(text);
}

void SlcGenByteCode::Report(std::string_view text)
{
    if (m_comment)
        m_errors->ErrorICode(m_comment, text);
    else
        m_errors->Error(m_shader, text);
}

void SlcGenByteCode::AddGotoLabel(const SlcLabel& label)
{
    const auto known = m_labels.find(label->m_name);
    if (known == m_labels.end())
        m_unknownLabels.emplace_back(label->m_name, m_code.size());
    m_code.push_back(known == m_labels.end() ? std::int16_t{0} : Fit(known->second, "Jump target"));
}

void SlcGenByteCode::AddLabelRef(const SlcLabel& label)
{
    m_labels.emplace(label->m_name, m_code.size());
}

void SlcGenByteCode::ResolveUnknownLabels()
{
    for (const auto& [name, position] : m_unknownLabels) {
        const auto known = m_labels.find(name);
        if (known == m_labels.end())
            m_errors->FatalError("Wrong label (in SlcGenByteCode::ResolveUnknownLabels): " + name);
        m_code[position] = Fit(known->second, "Jump target");
    }
}

void SlcGenByteCode::Default(SlcPtr<SlcICode> code)
{
    m_errors->FatalError("Cannot generate byte-code for " + std::string(SlcICodeName(*code)));
}
