// Lowers calls of built-ins in one of three ways:
//
//     plain           { CALL_PRIM_SIN T x }           runs at each point, in a parallel run
//                     CALL_PRIM_SIN T x               of uniform operands: runs once
//     whole grid      CALL_PRIM_NORMALIZE_SIMD T N    runs once, outside parallel runs, and itself
//                                                     computes the points of the grid
//     special         `sm_specials`, `filterstep`     separate functions for calls that read
//                     and transforms                  neighbours, need another list of arguments,
//                                                     or name two constant spaces
//
// A call without a special lowering uses the whole-grid form if `m_simdInstructions` is set, the
// call is not uniform, and its card has such a form, whose details the arguments match. Under a
// varying condition, the innermost level must also have a varying flag that is true at the active
// points: this flag becomes the condition of the instruction. Otherwise the call is plain.
//
// The whole-grid form specifies a detail for each argument. If it requires a varying input and the
// call has a uniform one, the value can be copied to all points first. This pays off only with many
// points, so it is done only at the highest optimization level. Other differences make the call
// plain.
//
// Before calls that read lights, the lights are evaluated for `P`. If an output argument is an
// array element with a varying index, the call writes a copy, which is then written back to the
// array.
//
// Tested by tests/lowering/SlcBuiltInLoweringTest.cpp.

#include <algorithm>
#include <cstdlib>

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcBuiltInLowering.h"
#include "sqx/SqxCard.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncTail.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Transforms between named spaces.
constexpr SqxPrimitive k_transforms[] = {
    SqxPrimitive::CALL_PRIM_TRANSFORM,   SqxPrimitive::CALL_PRIM_VTRANSFORM,
    SqxPrimitive::CALL_PRIM_NTRANSFORM,  SqxPrimitive::CALL_PRIM_TRANSFORM2,
    SqxPrimitive::CALL_PRIM_VTRANSFORM2, SqxPrimitive::CALL_PRIM_NTRANSFORM2,
};

SqxPrimitive PrimitiveOf(const SlcProcCallExprNode* call)
{
    return *call->GetSymbolEntry()->GetPrimitive();
}

/// True if the compiler added the integer to the call.
bool IsAddedInt(const SlcOperand& operand)
{
    return operand->IsInt() &&
           static_cast<const SlcIntConstNode*>(operand->GetLexical())->IsAdded();
}

}  // namespace

void SlcBuiltInLowering::Lower(SlcProcCallExprNode* node)
{
    SlcFuncSymbolEntry& entry = *node->GetSymbolEntry();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    BuiltInCall call{node, m_arguments.ReadAndCastParameters(node, formals), {}};
    for (std::size_t i = 0; i < formals.size(); ++i)
        if (formals[i].isOutput)
            call.outputs.push_back(call.args[i]);
    const bool looksAtLights = SqxCardOf(PrimitiveOf(node)).looksAtLights;
    if (looksAtLights)
        m_lights.AddEvalLightForP();

    const bool isVoid = SlcLoweringContext::TypeOf(node)->IsVoidType();
    SlcOperand result;
    if (entry.IsVarNbArgs() && entry.GetSIMDKind() == SlcCallSIMD::NoSimd) {
        result = node->GetIdent()->GetName() == "filterstep"
                     ? CreateBuiltInFilterstep(call)
                     : GenPlainCall(call, ArgumentList::Counted);
    } else {
        if (entry.IsVarNbArgs())
            MakeConstantNbArgs(call, formals);
        if (!isVoid)
            result = CreateSIMDFuncCall(call);
        if (result.Null())
            result = GenPlainCall(call, ArgumentList::Fixed);
    }
    if (looksAtLights)
        m_lights.NoteCallForP();
    if (!isVoid)
        m_values.Push(result);
    for (const SlcOperand& output : call.outputs)
        m_arguments.FinishOutputArgument(output);
}

SlcOperand SlcBuiltInLowering::GenPlainCall(const BuiltInCall& call, ArgumentList list)
{
    SlcDetailNode* detail = m_arguments.DetailOfCall(call.node, call.args);
    const SlcOperand result =
        SlcLoweringContext::TypeOf(call.node)->IsVoidType()
            ? SlcOperand()
            : GetCallResult(call, SlcCallArguments::TypeOfCall(call.node), detail);
    AddPlainCall(call, result, list, detail);
    return result;
}

SlcOperand SlcBuiltInLowering::GetCallResult(const BuiltInCall& call, SlcTypeNode* type,
                                             SlcDetailNode* detail)
{
    const SlcOperand result = m_list.GetResultVar(call.node, type, detail);
    // The function may write the result before or after its output arguments.
    const bool isAlsoOutput =
        std::any_of(call.outputs.begin(), call.outputs.end(), [&](const SlcOperand& output) {
            return m_values.VariableOf(output) == m_values.VariableOf(result);
        });
    return isAlsoOutput ? m_list.GenTempVar(type, detail) : result;
}

void SlcBuiltInLowering::AddPlainCall(const BuiltInCall& call, const SlcOperand& result,
                                      ArgumentList list, SlcDetailNode* detail)
{
    m_conditions.AddInBlock(detail, MakeCall(call, result, list, SlcGridForm::Plain()));
}

void SlcBuiltInLowering::AddGridCall(const BuiltInCall& call, const SlcOperand& result,
                                     const SlcGridForm& form)
{
    m_list.AddICode(MakeCall(call, result, ArgumentList::Fixed, form));
}

void SlcBuiltInLowering::AddGridOrPlainCall(const BuiltInCall& call, const SlcOperand& result)
{
    const SlcGridForm form = m_conditions.GridForm();
    m_conditions.AddInForm(form, MakeCall(call, result, ArgumentList::Fixed, form));
}

SlcPtr<SlcICode> SlcBuiltInLowering::MakeCall(const BuiltInCall& call, const SlcOperand& result,
                                              ArgumentList list, const SlcGridForm& form)
{
    const SlcPtr<SlcFuncSymbolEntry>& entry = call.node->GetSymbolEntry();
    const auto code =
        MakeShared<SlcCallICode>(PrimitiveOf(call.node), call.args, result, list, form, entry);
    code->m_node = call.node;
    return code;
}

void SlcBuiltInLowering::MakeConstantNbArgs(BuiltInCall& call,
                                            const std::vector<SlcCallFormal>& formals)
{
    const SlcPtr<SlcFuncSymbolEntry>& entry = call.node->GetSymbolEntry();
    const std::size_t fixed = entry->GetArgTypes().size();
    std::deque<SlcOperand> args(call.args.begin(),
                                call.args.begin() + static_cast<std::ptrdiff_t>(fixed));
    for (const SlcFuncVarArgSingle* value : SlcTailValues(entry->GetTail())) {
        // If a pair occurs twice, the last one counts.
        const auto given =
            std::find_if(formals.rbegin(), formals.rend(),
                         [&](const SlcCallFormal& formal) { return formal.tailValue == value; });
        args.push_back(given == formals.rend()
                           ? GetDefaultValue(*value)
                           : call.args[static_cast<std::size_t>(formals.rend() - given) - 1]);
    }
    call.args.swap(args);
}

SlcOperand SlcBuiltInLowering::GetDefaultValue(const SlcFuncVarArgSingle& single)
{
    const SlcTypeNode* type = single.GetType();
    // An omitted output has no variable that could be written.
    const bool hasValue = !single.GetDefault().empty() && !single.GetStorage()->IsOutput();
    const int value = std::atoi(single.GetDefault().c_str());
    if (hasValue && type->IsFloatType())
        return SlcLexType::Float(value);
    if (hasValue && type->IsBoolType())
        return SlcLexType::Bool(value != 0);
    // For a string, the card's default 0 means an empty text.
    if (hasValue && type->IsStringType())
        return SlcLexType::String("\"\"");
    return SlcLexType::Int(0, true);
}

SlcOperand SlcBuiltInLowering::CreateSIMDFuncCall(BuiltInCall& call)
{
    const SqxPrimitive primitive = PrimitiveOf(call.node);
    if (const SpecialLowering create = FindSpecialLowering(call))
        return (this->*create)(call);
    if (!m_options.m_simdInstructions)
        return nullptr;
    if (std::find(std::begin(k_transforms), std::end(k_transforms), primitive) !=
        std::end(k_transforms)) {
        const SlcOperand& value = call.args.back();
        const SlcOperand& to = call.args[call.args.size() - 2];
        const SlcOperand from =
            call.args.size() == 3 ? call.args.front() : SlcLexType::String("\"current\"");
        if (!from->IsUniform() || !to->IsUniform())
            return nullptr;
        const SlcOperand result = InlineTransform(call.node, primitive, from, to, value);
        if (!result.Null())
            return result;
    }
    return CreateGridCall(call);
}

// clang-format off
constexpr SlcBuiltInLowering::SpecialRow SlcBuiltInLowering::sm_specials[] = {
    {SqxPrimitive::CALL_PRIM_DU_FLOAT,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DU_POINT,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DU_COLOR,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DV_FLOAT,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DV_POINT,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DV_COLOR,        &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DERIV_FLOAT,     &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DERIV_POINT,     &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_DERIV_COLOR,     &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_AREA,            &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_CALCULATENORMAL, &SlcBuiltInLowering::CreateBuiltInDerivative},
    {SqxPrimitive::CALL_PRIM_SPLINE_1D,       &SlcBuiltInLowering::CreateBuiltInSpline},
    {SqxPrimitive::CALL_PRIM_SPLINE_3D,       &SlcBuiltInLowering::CreateBuiltInSpline},
    {SqxPrimitive::CALL_PRIM_SPLINE_BASIS_1D, &SlcBuiltInLowering::CreateBuiltInSpline},
    {SqxPrimitive::CALL_PRIM_SPLINE_BASIS_3D, &SlcBuiltInLowering::CreateBuiltInSpline},
    {SqxPrimitive::CALL_PRIM_ATMOSPHERE,      &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_DISPLACEMENT,    &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_LIGHTSOURCE,     &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_SURFACE,         &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_INCIDENT,        &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_OPPOSITE,        &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_ATTRIBUTE,       &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_OPTION,          &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_TEXTUREINFO,     &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_RENDERERINFO,    &SlcBuiltInLowering::CreateBuiltInMessageFunction},
    {SqxPrimitive::CALL_PRIM_SHADERNAME,      &SlcBuiltInLowering::CreateBuiltInShaderName},
    {SqxPrimitive::CALL_PRIM_SHADERNAME2,     &SlcBuiltInLowering::CreateBuiltInShaderName},
};
// clang-format on

SlcBuiltInLowering::SpecialLowering SlcBuiltInLowering::FindSpecialLowering(const BuiltInCall& call)
{
    const SqxPrimitive primitive = PrimitiveOf(call.node);
    for (const SpecialRow& row : sm_specials)
        if (primitive == row.primitive)
            return row.create;
    return nullptr;
}

SlcOperand SlcBuiltInLowering::CreateGridCall(BuiltInCall& call)
{
    const SlcFuncSymbolEntry& entry = *call.node->GetSymbolEntry();
    if (entry.GetSIMDKind() == SlcCallSIMD::NoSimd)
        return nullptr;
    if (entry.GetSIMDKind() == SlcCallSIMD::Simd &&
        m_arguments.DetailOfCall(call.node, call.args)->IsUniform())
        return nullptr;
    std::vector<std::size_t> widened;
    if (!CanUseGridCall(call, widened))
        return nullptr;
    WidenArguments(call, widened);
    const SlcOperand result = GetCallResult(call, entry.GetReturnType(), SlcDetailNode::AVarying());
    AddGridOrPlainCall(call, result);
    return result;
}

bool SlcBuiltInLowering::CanUseGridCall(const BuiltInCall& call,
                                        std::vector<std::size_t>& widened) const
{
    const auto& wanted = call.node->GetSymbolEntry()->GetSIMDDetails();
    for (std::size_t i = 0; i < call.args.size() && i < wanted.size(); ++i) {
        const SlcOperand& arg = call.args[i];
        if (IsAddedInt(arg) || arg->IsUniform() == wanted[i]->IsUniform())
            continue;
        const bool isOutput =
            std::find(call.outputs.begin(), call.outputs.end(), arg) != call.outputs.end();
        if (wanted[i]->IsUniform() || !m_options.m_aggressiveSIMD || isOutput)
            return false;
        widened.push_back(i);
    }
    return true;
}

void SlcBuiltInLowering::WidenArguments(BuiltInCall& call, const std::vector<std::size_t>& places)
{
    if (places.empty())
        return;
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    for (const std::size_t place : places)
        call.args[place] = m_context.WidenHere(call.args[place]);
    m_conditions.AddEndBlock(varying);
}
