// Reads and writes of an instruction as numbers, with what it does not name.
//
//     Ci = Cs              uses Cs; defs Ci
//     Ci = diffuse(n)      uses n, Ci (a call may leave some points as they were), and P, L and Cl,
//                          which the table below tells; defs Ci and n
//
// An argument of a call counts as written whatever its row says, so that the sets hold for any
// primitive. The ends of the shader write what the renderer gives and read what it takes.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcDeadCodeElimination, ...).

#include "optimizer/SlcDefUse.h"

#include <algorithm>

#include "icode/SlcICodes.h"

namespace {

constexpr std::string_view k_P = "i_hiddens.GetP()";
constexpr std::string_view k_L = "(i_lights[lightCnt].L)";
constexpr std::string_view k_Cl = "(i_lights[lightCnt].Cl)";
constexpr std::string_view k_lightVariables[] = {k_L, k_Cl, "(i_lights[lightCnt].Ol)"};

/// What a primitive reads of the predefined variables without having it as an argument.
struct HiddenRead {
    std::string_view primitive;  // the name, or the start that a family of names shares
    std::string_view accessor;
};

//   primitive                 predefined variable
constexpr HiddenRead k_hiddenReads[] = {
    {"CALL_PRIM_FACEFORWARD", "i_hiddens.GetNg()"},
    {"CALL_PRIM_AMBIENT", k_P},
    {"CALL_PRIM_AMBIENT", k_L},
    {"CALL_PRIM_DIFFUSE", k_P},
    {"CALL_PRIM_DIFFUSE", k_L},
    {"CALL_PRIM_DIFFUSE", k_Cl},
    {"CALL_PRIM_SPECULAR", k_P},
    {"CALL_PRIM_SPECULAR", k_L},
    {"CALL_PRIM_SPECULAR", k_Cl},
    {"CALL_PRIM_PHONG", k_P},
    {"CALL_PRIM_PHONG", k_L},
    {"CALL_PRIM_PHONG", k_Cl},
    {"CALL_TEXTURE", "i_hiddens.GetS()"},
    {"CALL_TEXTURE", "i_hiddens.GetT()"},
    {"CALL_TEXTURE", "i_hiddens.GetDu()"},
    {"CALL_TEXTURE", "i_hiddens.GetDv()"},
    {"CALL_ENVIRONMENT", "i_hiddens.GetDu()"},
    {"CALL_ENVIRONMENT", "i_hiddens.GetDv()"},
    {"CALL_SHADOW", "i_hiddens.GetDu()"},
    {"CALL_SHADOW", "i_hiddens.GetDv()"},
    {"CALL_SHADOW_1D_LIGHT", "i_hiddens.GetL()"},
    {"CALL_SHADOW_1D_LIGHT", "i_hiddens.GetPs()"},
    {"CALL_SHADOW_3D_LIGHT", "i_hiddens.GetL()"},
    {"CALL_SHADOW_3D_LIGHT", "i_hiddens.GetPs()"},
    {"CALL_AREASHADOW", "i_hiddens.GetDu()"},
    {"CALL_AREASHADOW", "i_hiddens.GetDv()"},
    {"CALL_AREASHADOW_1D_LIGHT", "i_hiddens.GetL()"},
    {"CALL_AREASHADOW_1D_LIGHT", "i_hiddens.GetPs()"},
    {"CALL_AREASHADOW_3D_LIGHT", "i_hiddens.GetL()"},
    {"CALL_AREASHADOW_3D_LIGHT", "i_hiddens.GetPs()"},
};

}  // namespace

SlcVariableNumbers::SlcVariableNumbers(const SlcListICode& list)
{
    m_variables.reserve(list.m_allVars.size());
    for (const SlcOperand& variable : list.m_allVars) {
        variable->m_setIndex = Count();
        if (variable->GetStorage()->IsReadOnly() || variable->GetStorage()->IsReadWrite())
            m_hiddens.push_back(Count());
        m_variables.push_back(variable);
    }
}

int SlcVariableNumbers::Of(const SlcOperand& operand)
{
    const SlcStorageSpecNode* storage = operand->GetStorage();
    if (!operand->IsIdent() ||
        !(storage->IsLocal() || storage->IsReadOnly() || storage->IsReadWrite()))
        return -1;
    return operand->m_setIndex;
}

int SlcVariableNumbers::OfHidden(std::string_view accessor) const
{
    const auto found = std::find_if(m_hiddens.begin(), m_hiddens.end(), [&](int number) {
        return m_variables[number]->GetName() == accessor;
    });
    return found == m_hiddens.end() ? -1 : *found;
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
    for (const std::string_view accessor : k_lightVariables)
        if (const int number = variables.OfHidden(accessor); number >= 0)
            m_lightVariables.push_back(number);
}

void SlcDefUse::Compute(const SlcPtr<SlcICode>& code)
{
    m_uses.clear();
    m_defs.clear();
    Visit(code);
}

void SlcDefUse::Add(std::vector<int>& numbers, const SlcOperand& operand)
{
    if (const int number = SlcVariableNumbers::Of(operand); number >= 0)
        numbers.push_back(number);
}

void SlcDefUse::UseHidden(std::string_view accessor)
{
    if (const int number = m_variables.OfHidden(accessor); number >= 0)
        m_uses.push_back(number);
}

void SlcDefUse::Case(SlcPtr<SlcCallICode> code)
{
    for (const SlcOperand& arg : code->m_args)
        Add(m_defs, arg);
    if (code->m_result)
        Add(m_defs, code->m_result);
    UseDefs();
    if (code->m_condition)
        Add(m_uses, code->m_condition);
    const std::string_view name = code->m_name->GetName();
    for (const HiddenRead& read : k_hiddenReads)
        if (name.substr(0, read.primitive.size()) == read.primitive)
            UseHidden(read.accessor);
}

void SlcDefUse::Case(SlcPtr<SlcCallDSOICode> code)
{
    for (const SlcOperand& arg : code->m_args)
        Add(m_defs, arg);
    if (code->m_result)
        Add(m_defs, code->m_result);
    UseDefs();
}

void SlcDefUse::Case(SlcPtr<SlcTransformSpaceICode> code)
{
    SlcOperandWalker::Case(code);
    UseDefs();
}

void SlcDefUse::Case(SlcPtr<SlcIlluminateICode> code)
{
    SlcOperandWalker::Case(code);
    if (code->m_condition)
        UseDefs();
}

void SlcDefUse::Case(SlcPtr<SlcSolarICode> code)
{
    SlcOperandWalker::Case(code);
    if (code->m_condition)
        UseDefs();
}

void SlcDefUse::Case(SlcPtr<SlcCheckIlluminanceICode> code)
{
    SlcOperandWalker::Case(code);
    UseDefs();
    m_uses.insert(m_uses.end(), m_lightVariables.begin(), m_lightVariables.end());
}

void SlcDefUse::Case(SlcPtr<SlcTextureSTPointsICode> code)
{
    SlcOperandWalker::Case(code);
    if (code->m_useCondition)
        UseDefs();
    // The corners are made from several points of what is read, and must not take its place.
    Add(m_defs, code->m_s);
    Add(m_defs, code->m_t);
    UseHidden("i_hiddens.GetDu()");
    UseHidden("i_hiddens.GetDv()");
}

void SlcDefUse::Case(SlcPtr<SlcTexturePointsICode> code)
{
    SlcOperandWalker::Case(code);
    if (code->m_useCondition)
        UseDefs();
    Add(m_defs, code->m_point);
    UseHidden("i_hiddens.GetDu()");
    UseHidden("i_hiddens.GetDv()");
}

void SlcDefUse::Case(SlcPtr<SlcFilterstepPointsICode> code)
{
    SlcOperandWalker::Case(code);
    UseDefs();
}

void SlcDefUse::Case(SlcPtr<SlcInvertBoolFlagICode> code)
{
    SlcOperandWalker::Case(code);
    // A flag that is inverted in place is never killed.
    if (code->m_dest == code->m_source)
        m_defs.clear();
}

void SlcDefUse::Case(SlcPtr<SlcConvertArrayDSOICode> code)
{
    SlcOperandWalker::Case(code);
    Add(m_defs, code->m_source);
}

// In a loop over lights, the light at hand is then one for other points.

void SlcDefUse::Case(SlcPtr<SlcEvalLightForPICode>)
{
    UseHidden(k_P);
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
