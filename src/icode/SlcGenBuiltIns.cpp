// Calls of built-ins: plain, for the whole grid, or by a lowering of their own.

#include <algorithm>
#include <cstdlib>

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncTail.h"
#include "symbols/SlcGeneratedNames.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

bool IsOneOf(const std::string& name, std::initializer_list<const char*> names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

bool LooksAtLights(const std::string& name)
{
    return IsOneOf(name, {"ambient", "specularstd", "diffuse", "specular", "phong"});
}

/// The compiler has added it to the call.
bool IsHiddenInt(const SlcOperand& operand)
{
    return operand->IsInt() &&
           static_cast<const SlcIntConstNode*>(operand->GetLexical())->IsHidden();
}

}  // namespace

SlcTypeNode* SlcGenInterCode::TypeOfCall(const SlcProcCallExprNode* call)
{
    SlcTypeNode* wanted = SlcLoweringContext::TypeOf(call);
    SlcTypeNode* returned = call->GetSymbolEntry()->GetReturnType();
    // A float that will be promoted is still one here.
    return wanted->IsSameType(returned) ? wanted : returned;
}

SlcDetailNode* SlcGenInterCode::DetailOfCall(const SlcProcCallExprNode* call,
                                             const std::deque<SlcOperand>& args) const
{
    // A value that is uniform in this call of a function may still stand in a varying temporary.
    return std::all_of(args.begin(), args.end(), [](const auto& arg) { return arg->IsUniform(); })
               ? m_context.DetailOf(call)
               : SlcDetailNode::Combine(m_context.DetailOf(call), SlcDetailNode::AVarying());
}

void SlcGenInterCode::GenBuiltInCall(SlcProcCallExprNode* node)
{
    SlcFuncSymbolEntry& entry = *node->GetSymbolEntry();
    const std::vector<SlcCallFormal> formals = SlcFormalsOf(*node);
    BuiltInCall call{node, ReadAndCastParameters(node, formals), {}};
    for (std::size_t i = 0; i < formals.size(); ++i)
        if (formals[i].isOutput)
            call.outputs.push_back(call.args[i]);
    const bool looksAtLights = LooksAtLights(node->GetIdent()->GetName());
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
        FinishOutputArgument(output);
}

SlcOperand SlcGenInterCode::GenPlainCall(const BuiltInCall& call, ArgumentList list)
{
    SlcDetailNode* detail = DetailOfCall(call.node, call.args);
    const SlcOperand result = SlcLoweringContext::TypeOf(call.node)->IsVoidType()
                                  ? SlcOperand()
                                  : GetCallResult(call, TypeOfCall(call.node), detail);
    AddPlainCall(call, result, list, detail);
    return result;
}

SlcOperand SlcGenInterCode::GetCallResult(const BuiltInCall& call, SlcTypeNode* type,
                                          SlcDetailNode* detail)
{
    const SlcOperand result = m_list.GetResultVar(call.node, type, detail);
    // The function writes the result before or behind its output arguments, as it likes.
    const bool isAlsoOutput =
        std::any_of(call.outputs.begin(), call.outputs.end(), [&](const SlcOperand& output) {
            return m_values.VariableOf(output) == m_values.VariableOf(result);
        });
    return isAlsoOutput ? m_list.GenTempVar(type, detail) : result;
}

void SlcGenInterCode::AddPlainCall(const BuiltInCall& call, const SlcOperand& result,
                                   ArgumentList list, SlcDetailNode* detail)
{
    const SlcPtr<SlcFuncSymbolEntry>& entry = call.node->GetSymbolEntry();
    const auto code = MakeShared<SlcCallICode>(
        entry->GetCName(), call.args, result, list == ArgumentList::Counted,
        entry->IsOrderSensitive(), false, entry, nullptr, false);
    code->m_node = call.node;
    m_conditions.AddInBlock(detail, code);
}

void SlcGenInterCode::AddGridCall(const BuiltInCall& call, const SlcOperand& result,
                                  const SlcOperand& condition)
{
    const SlcPtr<SlcFuncSymbolEntry>& entry = call.node->GetSymbolEntry();
    const auto code = MakeShared<SlcCallICode>(entry->GetCName(), call.args, result, false,
                                               entry->IsOrderSensitive(), true, entry, condition,
                                               !condition.Null());
    code->m_node = call.node;
    m_list.AddICode(code);
}

void SlcGenInterCode::AddGridOrPlainCall(const BuiltInCall& call, const SlcOperand& result)
{
    if (const auto condition = m_conditions.GridForm())
        AddGridCall(call, result, *condition);
    else
        AddPlainCall(call, result, ArgumentList::Fixed, SlcDetailNode::AVarying());
}

void SlcGenInterCode::MakeConstantNbArgs(BuiltInCall& call,
                                         const std::vector<SlcCallFormal>& formals)
{
    const auto entry = CheckCast<SlcFuncVarListSymbolEntry>(call.node->GetSymbolEntry());
    const std::size_t fixed = entry->GetArgTypes().size();
    std::deque<SlcOperand> args(call.args.begin(),
                                call.args.begin() + static_cast<std::ptrdiff_t>(fixed));
    for (const SlcFuncVarArgSingle* value : SlcTailValues(entry->GetTail())) {
        // If a pair is given twice the last one counts.
        const auto given =
            std::find_if(formals.rbegin(), formals.rend(),
                         [&](const SlcCallFormal& formal) { return formal.tailValue == value; });
        args.push_back(given == formals.rend()
                           ? GetDefaultValue(*value)
                           : call.args[static_cast<std::size_t>(formals.rend() - given) - 1]);
    }
    call.args.swap(args);
}

SlcOperand SlcGenInterCode::GetDefaultValue(const SlcFuncVarArgSingle& single)
{
    const SlcTypeNode* type = single.GetType();
    // There is nothing to write to.
    const bool hasValue = !single.GetDefault().empty() && !single.GetStorage()->IsOutput();
    const int value = std::atoi(single.GetDefault().c_str());
    if (hasValue && type->IsFloatType())
        return SlcLexType::Float(value);
    if (hasValue && type->IsBoolType())
        return SlcLexType::Bool(value != 0);
    // The row gives 0 for a name that is not there.
    if (hasValue && type->IsStringType())
        return SlcLexType::String("\"\"");
    return SlcLexType::Int(0, true);
}

SlcOperand SlcGenInterCode::CreateSIMDFuncCall(BuiltInCall& call)
{
    const std::string& name = call.node->GetSymbolEntry()->GetCName()->GetName();
    if (const SpecialLowering create = FindSpecialLowering(call))
        return (this->*create)(call);
    if (!m_options.m_simdInstructions)
        return nullptr;
    if (IsOneOf(name, {"CALL_PRIM_TRANSFORM", "CALL_PRIM_VTRANSFORM", "CALL_PRIM_NTRANSFORM",
                       "CALL_PRIM_TRANSFORM2", "CALL_PRIM_VTRANSFORM2", "CALL_PRIM_NTRANSFORM2"})) {
        const SlcOperand& value = call.args.back();
        const SlcOperand& to = call.args[call.args.size() - 2];
        const SlcOperand from =
            call.args.size() == 3 ? call.args.front() : SlcLexType::String("\"current\"");
        if (!from->IsUniform() || !to->IsUniform())
            return nullptr;
        const SlcOperand result = InlineTransform(call.node, name, from, to, value);
        if (!result.Null())
            return result;
    }
    return CreateGridCall(call);
}

SlcGenInterCode::SpecialLowering SlcGenInterCode::FindSpecialLowering(const BuiltInCall& call)
{
    struct Row {
        const char* name;
        SpecialLowering create;
    };
    using Gen = SlcGenInterCode;
    // clang-format off
    static constexpr Row rows[] = {
        {"CALL_PRIM_DU_FLOAT",        &Gen::CreateBuiltInDu},
        {"CALL_PRIM_DU_POINT",        &Gen::CreateBuiltInDu},
        {"CALL_PRIM_DU_COLOR",        &Gen::CreateBuiltInDu},
        {"CALL_PRIM_DV_FLOAT",        &Gen::CreateBuiltInDv},
        {"CALL_PRIM_DV_POINT",        &Gen::CreateBuiltInDv},
        {"CALL_PRIM_DV_COLOR",        &Gen::CreateBuiltInDv},
        {"CALL_PRIM_DERIV_FLOAT",     &Gen::CreateBuiltInDeriv},
        {"CALL_PRIM_DERIV_POINT",     &Gen::CreateBuiltInDeriv},
        {"CALL_PRIM_DERIV_COLOR",     &Gen::CreateBuiltInDeriv},
        {"CALL_PRIM_AREA",            &Gen::CreateBuiltInArea},
        {"CALL_PRIM_CALCULATENORMAL", &Gen::CreateBuiltInCalculateNormal},
        {"CALL_PRIM_SPLINE_1D",       &Gen::CreateBuiltInSpline},
        {"CALL_PRIM_SPLINE_3D",       &Gen::CreateBuiltInSpline},
        {"CALL_PRIM_SPLINE_BASIS_1D", &Gen::CreateBuiltInSpline},
        {"CALL_PRIM_SPLINE_BASIS_3D", &Gen::CreateBuiltInSpline},
        {"CALL_PRIM_ATMOSPHERE",      &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_DISPLACEMENT",    &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_LIGHTSOURCE",     &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_SURFACE",         &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_INCIDENT",        &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_OPPOSITE",        &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_ATTRIBUTE",       &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_OPTION",          &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_TEXTUREINFO",     &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_RENDERERINFO",    &Gen::CreateBuiltInMessageFunction},
        {"CALL_PRIM_SHADERNAME",      &Gen::CreateBuiltInShaderName},
        {"CALL_PRIM_SHADERNAME2",     &Gen::CreateBuiltInShaderName},
    };
    // clang-format on
    const std::string& name = call.node->GetSymbolEntry()->GetCName()->GetName();
    for (const Row& row : rows)
        if (name == row.name)
            return row.create;
    return nullptr;
}

/// One call for the whole grid, if the details of the arguments suit it.
SlcOperand SlcGenInterCode::CreateGridCall(BuiltInCall& call)
{
    const SlcFuncSymbolEntry& entry = *call.node->GetSymbolEntry();
    if (entry.GetSIMDKind() == SlcCallSIMD::NoSimd)
        return nullptr;
    if (entry.GetSIMDKind() == SlcCallSIMD::Simd && DetailOfCall(call.node, call.args)->IsUniform())
        return nullptr;
    std::vector<std::size_t> widened;
    if (!SuitGridCall(call, widened))
        return nullptr;
    WidenArguments(call, widened);
    const SlcOperand result = GetCallResult(call, entry.GetReturnType(), SlcDetailNode::AVarying());
    AddGridOrPlainCall(call, result);
    return result;
}

/// Adds to `widened` the places of uniform arguments where varying ones are wanted.
bool SlcGenInterCode::SuitGridCall(const BuiltInCall& call, std::vector<std::size_t>& widened) const
{
    const auto& wanted = call.node->GetSymbolEntry()->GetSIMDDetails();
    for (std::size_t i = 0; i < call.args.size() && i < wanted.size(); ++i) {
        const SlcOperand& arg = call.args[i];
        if (IsHiddenInt(arg) || arg->IsUniform() == wanted[i]->IsUniform())
            continue;
        const bool isOutput =
            std::find(call.outputs.begin(), call.outputs.end(), arg) != call.outputs.end();
        if (wanted[i]->IsUniform() || !m_options.m_aggressiveSIMD || isOutput)
            return false;
        widened.push_back(i);
    }
    return true;
}

void SlcGenInterCode::WidenArguments(BuiltInCall& call, const std::vector<std::size_t>& places)
{
    if (places.empty())
        return;
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    m_conditions.AddBeginBlock(varying);
    for (const std::size_t place : places)
        call.args[place] = m_context.WidenHere(call.args[place]);
    m_conditions.AddEndBlock(varying);
}
