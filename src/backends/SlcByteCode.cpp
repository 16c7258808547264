#include "backends/SlcByteCode.h"

#include <array>

#include "support/SlcDiagnostics.h"

namespace {

constexpr SlcByteCode::Row Mark(const char* name, SlcByteCodeMark mark)
{
    return {name, static_cast<short>(mark)};
}

using NamesByNumber = std::array<std::string_view, SlcByteCode::k_highestNumber + 1>;

void FillNames(NamesByNumber& names, const SlcByteCode::Row* row)
{
    for (; row->name; ++row)
        names[static_cast<std::size_t>(row->number)] = row->name;
}

}  // namespace

constexpr SlcByteCode::Row SlcByteCode::sm_marks[] = {
    Mark("GOTO", SlcByteCodeMark::Goto),
    Mark("BEGIN_ILLUMINANCE", SlcByteCodeMark::BeginIlluminance),
    Mark("END_ILLUMINANCE", SlcByteCodeMark::EndIlluminance),
    Mark("BEGIN_PARALLEL", SlcByteCodeMark::BeginParallel),
    Mark("END_PARALLEL", SlcByteCodeMark::EndParallel),
    Mark("IF_TRUE", SlcByteCodeMark::IfTrue),
    Mark("IF_FALSE", SlcByteCodeMark::IfFalse),
    Mark("IF_TRUE_GOTO", SlcByteCodeMark::IfTrueGoto),
    Mark("IF_FALSE_GOTO", SlcByteCodeMark::IfFalseGoto),
    Mark("SET_BOOL", SlcByteCodeMark::SetBool),
    Mark("EVAL_LIGHTS_FOR_P", SlcByteCodeMark::EvalLightsForP),
    Mark("RESET_EVAL_LIGHTS_FOR_P", SlcByteCodeMark::ResetEvalLightsForP),
    Mark("ARRAY_REF", SlcByteCodeMark::ArrayRef),
    Mark("CHECK_VALID_ARRAY_INDEX", SlcByteCodeMark::CheckValidArrayIndex),
    Mark("END_IF", SlcByteCodeMark::EndIf),
    Mark("CALL_DSO", SlcByteCodeMark::CallDSO),
    Mark("CONVERT_ARRAY_DSO_TO", SlcByteCodeMark::ConvertArrayDSOTo),
    Mark("CONVERT_ARRAY_DSO_FROM", SlcByteCodeMark::ConvertArrayDSOFrom),
    {nullptr, 0},
};

SlcByteCode::SlcByteCode()
{
    for (const Row* row = sm_theByteCodes; row->name; ++row)
        m_numbers.emplace(row->name, row->number);
}

short SlcByteCode::GetInstrNb(const std::string& name) const
{
    const auto found = m_numbers.find(name);
    if (found == m_numbers.end())
        FatalError("Function unknown (in SlcByteCode::GetInstrNb) " + name);
    return found->second;
}

std::string_view SlcByteCode::GetName(int number)
{
    static const NamesByNumber names = [] {
        NamesByNumber filled;
        FillNames(filled, sm_theByteCodes);
        FillNames(filled, sm_marks);
        return filled;
    }();
    if (number < 0 || number > k_highestNumber)
        return {};
    return names[static_cast<std::size_t>(number)];
}
