// Counts the labels, then checks the instructions in one walk in textual order. The rules about an
// instruction and its place depend on its operands, so each instruction's operands are visited
// before these rules are checked.
//
// Tested by tests/icode/SlcICodeTextTest.cpp; the tests of random shaders run it between all
// passes.

#include "icode/SlcICodeValidator.h"

#include <algorithm>

#include "icode/SlcICodeText.h"
#include "icode/SlcICodes.h"
#include "support/SlcDiagnostics.h"

namespace {

using namespace SlcICodeTraits;

}  // namespace

SlcICodeValidator::SlcICodeValidator(const SlcListICode& list, Stage stage) : m_stage(stage)
{
    for (const auto& code : list.m_icodes) {
        if (const auto* label = dynamic_cast<const SlcLabelICode*>(&*code))
            ++m_labels[label->Name()];
        else if (const auto* head = dynamic_cast<const SlcBeginIlluminanceICode*>(&*code))
            ++m_labels[head->m_startLabel->Name()];  // not in the list: the head implies it
    }
}

std::string SlcICodeValidator::FirstFault(const SlcListICode& list, Stage stage)
{
    SlcICodeValidator validator(list, stage);
    SlcICodeNames names;
    for (const auto& code : list.m_icodes) {
        const std::string text = SlcICodeText::Of(*code, names);
        validator.Check(code);
        if (validator.m_fault)
            return "'" + text + "': " + validator.m_fault;
    }
    if (validator.m_isInRun || !validator.m_guards.empty())
        return "the end: a bracket is still open";
    return {};
}

void SlcICodeValidator::Require(const SlcListICode& list, Stage stage)
{
    const std::string fault = FirstFault(list, stage);
    if (!fault.empty())
        FatalError(std::string("SlcICodeValidator::Require: after ") +
                   (stage == Stage::Lowered ? "the lowering, " : "a pass, ") + fault);
}

void SlcICodeValidator::Check(SlcPtr<SlcICode> code)
{
    m_readsVarying = m_writesVarying = m_writesUniform = m_joinsPoints = false;
    m_isWholeGrid = code->Is(WholeGrid);
    Visit(code);
    CheckPlace(*code);
    if (code->Is(Computes) && m_writesUniform && m_readsVarying && !m_joinsPoints)
        Fail("a varying value is put into a uniform operand");
}

void SlcICodeValidator::CheckPlace(const SlcICode& code)
{
    if (m_isInRun && m_isWholeGrid)
        Fail("an instruction for the whole grid is in a parallel run");
    if (!m_isInRun && !m_isWholeGrid && code.Is(Computes) && m_writesVarying)
        Fail("a varying value is computed outside of a parallel run");
}

void SlcICodeValidator::Read(SlcOperand& operand)
{
    m_readsVarying |= !operand->IsUniform();
    if (m_stage == Stage::Lowered && SlcICodeNames::IsTemporary(*operand) &&
        m_written.count(&*operand) == 0)
        Fail("a temporary is read before it is written");
}

void SlcICodeValidator::Write(SlcOperand& operand)
{
    (operand->IsUniform() ? m_writesUniform : m_writesVarying) = true;
    m_written.insert(&*operand);
}

void SlcICodeValidator::Case(SlcPtr<SlcBeginParallelICode>)
{
    if (m_isInRun)
        Fail("a parallel run opens in another");
    m_isInRun = true;
    m_guardsOutside = m_guards.size();
}

void SlcICodeValidator::Case(SlcPtr<SlcEndParallelICode>)
{
    if (!m_isInRun)
        Fail("no parallel run is open");
    if (m_guards.size() != m_guardsOutside)
        Fail("a guard is open at the end of a parallel run");
    m_isInRun = false;
}

void SlcICodeValidator::Case(SlcPtr<SlcIfICode> code)
{
    SlcOperandWalker::Case(code);
    CheckFlag(code->m_flag, !m_isInRun);
    m_guards.push_back(code->m_label->Name());
}

void SlcICodeValidator::Case(SlcPtr<SlcEndIfICode> code)
{
    if (m_guards.size() <= (m_isInRun ? m_guardsOutside : 0))
        Fail("no guard is open");
    else if (m_guards.back() != code->m_label->Name())
        Fail("another guard is open");
    else
        m_guards.pop_back();
}

void SlcICodeValidator::Case(SlcPtr<SlcLabelICode> code)
{
    if (m_isInRun)
        Fail("a label is in a parallel run");
    if (m_labels[code->Name()] != 1)
        Fail("the label is in the list twice");
}

void SlcICodeValidator::Case(SlcPtr<SlcGotoICode> code)
{
    CheckTarget(code->m_label);
}

void SlcICodeValidator::Case(SlcPtr<SlcIfTrueGotoICode> code)
{
    SlcOperandWalker::Case(code);
    CheckFlag(code->m_flag, true);
    CheckTarget(code->m_label);
}

void SlcICodeValidator::Case(SlcPtr<SlcIfFalseGotoICode> code)
{
    SlcOperandWalker::Case(code);
    CheckFlag(code->m_flag, true);
    CheckTarget(code->m_label);
}

void SlcICodeValidator::Case(SlcPtr<SlcBeginIlluminanceICode> code)
{
    CheckTarget(code->m_endLabel);
}

void SlcICodeValidator::Case(SlcPtr<SlcEndIlluminanceICode> code)
{
    CheckTarget(code->m_startLabel);
}

void SlcICodeValidator::Case(SlcPtr<SlcSetUniformBoolFlagICode> code)
{
    m_joinsPoints = true;
    SlcOperandWalker::Case(code);
    CheckFlag(code->m_dest, true);
    CheckFlag(code->m_source, false);
}

void SlcICodeValidator::Case(SlcPtr<SlcAssignICode> code)
{
    SlcOperandWalker::Case(code);
    m_joinsPoints = true;  // allowed where the lowering knows that all points have the same value
}

void SlcICodeValidator::Case(SlcPtr<SlcOrBoolFlagICode> code)
{
    SlcOperandWalker::Case(code);
    m_isWholeGrid = true;  // lacks the trait, since a constant may replace one of its operands
}

void SlcICodeValidator::Case(SlcPtr<SlcArrayRefICode> code)
{
    Read(code->m_index);
    // The instruction only makes a reference. The first use of the array may be a write through it,
    // so the array counts as written.
    m_written.insert({&*code->m_array, &*code->m_result});
}

/// Handles instructions that have a plain and a whole-grid form.
template <class Code>
void SlcICodeValidator::CheckForm(const SlcPtr<Code>& code)
{
    SlcOperandWalker::Case(code);
    m_isWholeGrid = code->m_form.simd;
}

void SlcICodeValidator::CheckFlag(const SlcOperand& flag, bool mustBeUniform)
{
    if (!flag->GetType()->IsBoolType())
        Fail("the flag is no boolean");
    if (mustBeUniform && !flag->IsUniform())
        Fail("the flag must be uniform");
}

void SlcICodeValidator::CheckTarget(const SlcLabel& label)
{
    if (m_isInRun)
        Fail("a jump is in a parallel run");
    if (m_labels[label->Name()] == 0)
        Fail("the label is not in the list");
}

void SlcICodeValidator::Fail(const char* rule)
{
    if (!m_fault)
        m_fault = rule;
}
