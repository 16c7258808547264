// The values of one code block: numbers of instructions and operands, literals and jump targets. A
// forward jump leaves a gap that is filled when all labels have been added:
//
//     goto L; x = 1; L:        GOTO ? ASSIGN x 1       and at the end        GOTO 5 ASSIGN x 1
//
// Operands, literals and jump targets are checked to fit into 16 bits; overflow is reported once
// per kind of value.
//
// Tested by tests/backends/GenByteCodeTest.cpp.

#include "backends/SlcCodeBlock.h"

#include <limits>

#include "backends/SlcByteCode.h"
#include "sqx/SqxCard.h"

namespace {

constexpr std::size_t k_highestValue = std::numeric_limits<std::int16_t>::max();

}  // namespace

void SlcCodeBlock::Reset()
{
    m_values.clear();
    m_labels.clear();
    m_unknownLabels.clear();
}

std::int16_t SlcCodeBlock::Fit(std::size_t value, std::string_view what)
{
    if (value <= k_highestValue)
        return static_cast<std::int16_t>(value);
    if (m_reported.emplace(what).second)
        m_report(std::string(what) + ' ' + std::to_string(value) +
                 " does not fit into byte-code, whose largest number is " +
                 std::to_string(k_highestValue) + ", use '--dso'");
    return 0;
}

void SlcCodeBlock::AddInstr(std::string_view name)
{
    m_values.push_back(SlcByteCode::GetInstrNb(name));
}

void SlcCodeBlock::AddInstr(SqxPrimitive primitive, SqxForm form)
{
    if (const short number = SqxCardOf(primitive).Number(form))
        m_values.push_back(number);
    else
        AddInstr(SqxFormName(primitive, form));
}

void SlcCodeBlock::AddConst(int value, std::string_view what)
{
    m_values.push_back(value == -1 ? std::int16_t{-1} : Fit(static_cast<std::size_t>(value), what));
}

void SlcCodeBlock::AddVar(const SlcOperand& operand)
{
    const auto index = static_cast<std::size_t>(operand->m_index);
    if (index <= k_highestValue) {
        m_values.push_back(static_cast<std::int16_t>(index));
        return;
    }
    if (operand->m_index < 0)
        ReportUnnumbered(operand);
    AddConst(operand->m_index, "Variable number");
}

void SlcCodeBlock::AddVars(const std::deque<SlcOperand>& operands)
{
    for (const SlcOperand& operand : operands)
        AddVar(operand);
}

void SlcCodeBlock::AddVarIfSet(const SlcOperand& operand)
{
    if (operand)
        AddVar(operand);
}

/// An operand that no section has declared is an error, since the file would not load.
void SlcCodeBlock::ReportUnnumbered(const SlcOperand& operand)
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
    m_report(text);
}

void SlcCodeBlock::AddGotoLabel(const SlcLabel& label)
{
    const bool isKnown = IsKnown(*label);
    if (!isKnown)
        m_unknownLabels.emplace_back(label, m_values.size());
    m_values.push_back(isKnown ? JumpTo(*label) : std::int16_t{0});
}

// The label may still hold a number from an earlier block or writer.
bool SlcCodeBlock::IsKnown(const SlcLabelICode& label) const
{
    const auto number = static_cast<std::size_t>(label.m_place);
    return number < m_labels.size() && m_labels[number].label == &label;
}

std::int16_t SlcCodeBlock::JumpTo(const SlcLabelICode& label)
{
    return Fit(m_labels[static_cast<std::size_t>(label.m_place)].position, "Jump target");
}

void SlcCodeBlock::AddLabelRef(const SlcLabel& label)
{
    label->m_place = static_cast<int>(m_labels.size());
    m_labels.push_back({&*label, m_values.size()});
}

std::string SlcCodeBlock::ResolveUnknownLabels()
{
    for (const auto& [label, position] : m_unknownLabels) {
        if (!IsKnown(*label))
            return label->Name();
        m_values[position] = JumpTo(*label);
    }
    return {};
}
