// Reads and writes of an instruction as numbers, including variables that it does not name.
//
//     Ci = Cs              uses Cs; defs Ci
//     Ci = diffuse(n)      uses n, Ci (a call may leave some points unchanged), and P, L and Cl,
//                          from the card of `diffuse`; defs Ci and n
//
// Every argument of a call counts as read and written, regardless of the card of the primitive, so
// that the sets hold for any primitive. The marker at the start of the shader writes all predefined
// variables; the marker at the end reads those that the shader may write, since the renderer uses
// their values.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...).

#include "optimizer/SlcDefUse.h"

#include <algorithm>

#include "icode/SlcICodes.h"
#include "sqx/SqxCard.h"
#include "symbols/SlcHiddenVariables.h"

namespace {

/// Finds the result of an instruction that has no other effect.
class ComputedResult : public SlcOperandWalker {
public:
    /// Returns null for an instruction with other effects, or without a result.
    [[nodiscard]] SlcOperand Of(const SlcPtr<SlcICode>& code)
    {
        m_result = nullptr;
        m_assignsItself = false;
        if (code->Is(SlcICodeTraits::Computes))
            Visit(code);
        return m_result;
    }
    [[nodiscard]] bool AssignsItself() const { return m_assignsItself; }

private:
    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override
    {
        m_result = code->m_dest;
        m_assignsItself = code->m_dest == code->m_source;
    }
    void Read(SlcOperand&) override {}
    void Write(SlcOperand& operand) override { m_result = operand; }

    SlcOperand m_result;
    bool m_assignsItself = false;
};

/// True if the operand is a tracked variable, but no array or array reference, so that all uses of
/// its value can be found. An element is also read and written through references to it.
bool IsWholeVariable(const SlcOperand& operand)
{
    const SlcTypeNode* type = operand->GetType();
    return SlcVariableNumbers::Of(operand) >= 0 && !type->IsArrayType() && !type->IsArrayRefType();
}

}  // namespace

SlcVariableNumbers::SlcVariableNumbers(const SlcListICode& list)
{
    m_variables.reserve(list.m_allVars.size());
    for (const SlcOperand& variable : list.m_allVars) {
        const SlcStorageSpecNode* storage = variable->GetStorage();
        const bool isHidden = storage->IsReadOnly() || storage->IsReadWrite();
        const bool isFollowed = variable->IsIdent() && (isHidden || storage->IsLocal());
        variable->m_setIndex = isFollowed ? Count() : -1;
        if (isHidden)
            m_hiddens.push_back(Count());
        m_variables.push_back(variable);
    }
}

int SlcVariableNumbers::OfAccessor(std::string_view accessor) const
{
    const auto found = std::find_if(m_hiddens.begin(), m_hiddens.end(), [&](int number) {
        return m_variables[number]->GetName() == accessor;
    });
    return found == m_hiddens.end() ? -1 : *found;
}

int SlcVariableNumbers::OfPredefined(std::string_view name) const
{
    if (const auto* light = SlcHiddenVariables::FindVarInfoIlluminance(name))
        if (const int number = OfAccessor(light->accessor); number >= 0)
            return number;
    return OfAccessor(SlcHiddenVariables::GetVarInfoHidden(name).accessor);
}

SlcDefUse::SlcDefUse(const SlcVariableNumbers& variables) : m_variables(variables)
{
    for (int number = 0; number < variables.Count(); ++number) {
        const SlcStorageSpecNode* storage = variables.Variable(number)->GetStorage();
        if (storage->IsReadOnly() || storage->IsReadWrite())
            m_predefined.push_back(number);
        if (storage->IsReadWrite())
            m_readWrite.push_back(number);
    }
    for (const auto& light : SlcHiddenVariables::AllOfIlluminance())
        if (const int number = variables.OfAccessor(light.accessor); number >= 0)
            m_lightVariables.push_back(number);
}

void SlcDefUse::ForgetAll()
{
    m_entries.clear();
    m_numbers.clear();
}

void SlcDefUse::Add(const SlcPtr<SlcICode>& code)
{
    Collect(code);
    ComputedResult computed;
    const SlcOperand result = computed.Of(code);
    const std::size_t first = m_numbers.size();
    m_numbers.insert(m_numbers.end(), m_uses.begin(), m_uses.end());
    const std::size_t defs = m_numbers.size();
    m_numbers.insert(m_numbers.end(), m_defs.begin(), m_defs.end());
    code->m_flowIndex = static_cast<int>(m_entries.size());
    m_entries.push_back({&*code, first, defs, m_numbers.size(),
                         result && IsWholeVariable(result) ? SlcVariableNumbers::Of(result) : -1,
                         computed.AssignsItself()});
}

void SlcDefUse::Collect(const SlcPtr<SlcICode>& code)
{
    m_uses.clear();
    m_defs.clear();
    m_isLimited = false;
    // Save time for the many brackets without operands.
    using namespace SlcICodeTraits;
    if (code->Is(OpensRun | ClosesRun | ClosesGuard))
        return;
    Visit(code);
    if (code->Is(PartialWrite) || (m_isLimited && code->Is(PartialIfLimited)))
        m_uses.insert(m_uses.end(), m_defs.begin(), m_defs.end());
}

void SlcDefUse::Add(std::vector<int>& numbers, const SlcOperand& operand)
{
    if (const int number = SlcVariableNumbers::Of(operand); number >= 0)
        numbers.push_back(number);
}

void SlcDefUse::UsePredefined(std::string_view name)
{
    if (const int number = m_variables.OfPredefined(name); number >= 0)
        m_uses.push_back(number);
}

void SlcDefUse::Case(SlcPtr<SlcCallICode> code)
{
    for (const SlcOperand& arg : code->m_args)
        Add(m_defs, arg);
    if (code->m_result)
        Add(m_defs, code->m_result);
    if (code->m_form.condition)
        Add(m_uses, code->m_form.condition);
    for (const std::string_view variable : SqxCardOf(code->m_primitive).Reads())
        if (!variable.empty())
            UsePredefined(variable);
}

void SlcDefUse::Case(SlcPtr<SlcCallDSOICode> code)
{
    for (const SlcOperand& arg : code->m_args)
        Add(m_defs, arg);
    if (code->m_result)
        Add(m_defs, code->m_result);
}

void SlcDefUse::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    SlcOperandWalker::Case(code);
    m_uses.insert(m_uses.end(), m_lightVariables.begin(), m_lightVariables.end());
}

void SlcDefUse::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    SlcOperandWalker::Case(code);
    // The corners are computed from the operands at several points, so no corner may share the
    // storage of an operand. For that, the operands count as written too.
    Add(m_defs, code->m_s);
    Add(m_defs, code->m_t);
    UsePredefined("du");
    UsePredefined("dv");
}

void SlcDefUse::Case(SlcPtr<SlcTexturePointsICode> code)
{
    SlcOperandWalker::Case(code);
    Add(m_defs, code->m_point);
    UsePredefined("du");
    UsePredefined("dv");
}

void SlcDefUse::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    SlcOperandWalker::Case(code);
    // An inversion in place reads the old value, so it does not kill the flag.
    if (code->m_dest == code->m_source)
        m_defs.clear();
}

void SlcDefUse::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    SlcOperandWalker::Case(code);
    Add(m_defs, code->m_source);
}

// The next four instructions, except the reset, which only marks the lights as stale, replace all
// lights or the current one, and thereby `L`, `Cl` and `Ol` in light loops.

void SlcDefUse::Case(SlcPtr<SlcEvalLightForPICode>)
{
    UsePredefined("P");
    m_defs = m_lightVariables;
}

void SlcDefUse::Case(SlcPtr<SlcEvalLightICode> code)
{
    SlcOperandWalker::Case(code);
    m_defs = m_lightVariables;
}

void SlcDefUse::Case(SlcPtr<SlcResetEvalLightForPICode>) {}

void SlcDefUse::Case(SlcPtr<SlcBeginIlluminanceICode>)
{
    m_defs = m_lightVariables;
}

void SlcDefUse::Case(SlcPtr<SlcBeginShaderICode>)
{
    m_defs = m_predefined;
}

void SlcDefUse::Case(SlcPtr<SlcEndShaderICode>)
{
    m_uses = m_readWrite;
}
