#include "machine/SqxProgram.h"

namespace {

using enum SqxPrimitive;

struct StepRow {
    SqxPrimitive primitive;
    SqxStep step;
    bool wanted;
};

// clang-format off
constexpr StepRow k_steps[] = {
    {BEGIN_PARALLEL,          SqxStep::BeginParallel,  true},
    {END_PARALLEL,            SqxStep::EndParallel,    true},
    {IF_TRUE,                 SqxStep::If,             true},
    {IF_FALSE,                SqxStep::If,             false},
    {END_IF,                  SqxStep::EndIf,          true},
    {GOTO,                    SqxStep::Goto,           true},
    {IF_TRUE_GOTO,            SqxStep::GotoIf,         true},
    {IF_FALSE_GOTO,           SqxStep::GotoIf,         false},
    {SET_BOOL,                SqxStep::SetBool,        true},
    {BEGIN_ILLUMINANCE,       SqxStep::BeginLights,    true},
    {END_ILLUMINANCE,         SqxStep::EndLights,      true},
    {EVAL_LIGHTS,             SqxStep::EvalLights,     true},
    {EVAL_LIGHTS_FOR_P,       SqxStep::EvalLightsForP, true},
    {RESET_EVAL_LIGHTS_FOR_P, SqxStep::ResetLights,    true},
    {ARRAY_REF,               SqxStep::ArrayRef,       true},
    {CHECK_VALID_ARRAY_INDEX, SqxStep::CheckIndex,     true},
    {CALL_DSO,                SqxStep::CallShadeop,    true},
};
// clang-format on

const StepRow* FindStep(SqxPrimitive primitive)
{
    for (const StepRow& row : k_steps)
        if (row.primitive == primitive)
            return &row;
    return nullptr;
}

bool IsLightStatement(SqxPrimitive primitive)
{
    return primitive == ILLUMINATE || primitive == ILLUMINATE_NO_CONE || primitive == SOLAR ||
           primitive == ILLUMINANCE;
}

void FindOperation(SqxCode& code, const SqxLayout& layout)
{
    const SqxPrimitive primitive = layout.primitive;
    if (const StepRow* row = FindStep(primitive)) {
        code.step = row->step;
        code.wanted = row->wanted;
        return;
    }
    code.gridOperation = SqxFindGridOperation(primitive);
    if (code.gridOperation) {
        code.step = SqxStep::Grid;
        return;
    }
    code.step = layout.simd ? SqxStep::Simd : SqxStep::Plain;
    code.isStatement = IsLightStatement(primitive);
    code.operation = SqxFindOperation(primitive);
    if (!code.operation)
        throw SqxFault{"Nothing is known of instruction " + std::string(layout.name)};
}

}  // namespace

SqxProgram::SqxProgram(const SqxBlock& block)
{
    m_codes.reserve(block.instructions.size());
    for (const SqxInstruction& source : block.instructions)
        m_codes.push_back(Translate(block, source));
    MatchBrackets();
}

bool SqxProgram::Knows(SqxPrimitive primitive)
{
    return FindStep(primitive) || SqxFindGridOperation(primitive) || SqxFindOperation(primitive);
}

SqxCode SqxProgram::Translate(const SqxBlock& block, const SqxInstruction& source)
{
    SqxCode code;
    code.source = &source;
    FindOperation(code, *source.layout);
    for (std::size_t i = 0; i < source.count; ++i) {
        const int value = block.Value(source, i);
        switch (SqxBlock::Letter(source, i)) {
        case 'n':
            break;
        case 'c':
            code.condition = value;
            break;
        case 'j':
            code.other = block.IndexOf(static_cast<std::size_t>(value));
            break;
        case 'd':
            code.number = value;
            break;
        default:
            code.operands.push_back(value);
        }
    }
    return code;
}

void SqxProgram::MatchBrackets()
{
    std::vector<std::size_t> open;
    for (std::size_t i = 0; i < m_codes.size(); ++i) {
        const SqxStep step = m_codes[i].step;
        if (step == SqxStep::BeginParallel || step == SqxStep::If)
            open.push_back(i);
        if (step != SqxStep::EndParallel && step != SqxStep::EndIf)
            continue;
        const SqxStep opener = step == SqxStep::EndIf ? SqxStep::If : SqxStep::BeginParallel;
        if (open.empty() || m_codes[open.back()].step != opener)
            throw SqxFault{"A bracket is closed that was not opened last"};
        m_codes[i].other = open.back();
        m_codes[open.back()].other = i;
        open.pop_back();
    }
    if (!open.empty())
        throw SqxFault{"A bracket is not closed"};
}
