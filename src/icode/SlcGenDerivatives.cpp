// Built-ins that look at neighbouring points: they exist only as one call for the whole grid.

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"
#include "symbols/SlcShaderSymbolTable.h"

using Hiddens = SlcShaderSymbolTable;

SlcOperand SlcGenInterCode::CreateBuiltInDu(BuiltInCall& call)
{
    if (call.args[0]->IsUniform()) {
        WarnOfZero(call, "Du() will always return 0 since its parameter is uniform.");
        return GenZero(call);
    }
    SlcTypeNode* type = SlcElements::ValueType(call.args[0]);
    call.args.push_back(PredefinedOperand(Hiddens::sm_du, call, "CreateBuiltInDu"));
    return GenDerivative(
        call, type, "Calling Du() inside a varying conditional can lead to unexpected results.");
}

SlcOperand SlcGenInterCode::CreateBuiltInDv(BuiltInCall& call)
{
    if (call.args[0]->IsUniform()) {
        WarnOfZero(call, "Dv() will always return 0 since its parameter is uniform.");
        return GenZero(call);
    }
    SlcTypeNode* type = SlcElements::ValueType(call.args[0]);
    call.args.push_back(PredefinedOperand(Hiddens::sm_dv, call, "CreateBuiltInDv"));
    return GenDerivative(
        call, type, "Calling Dv() inside a varying conditional can lead to unexpected results.");
}

SlcOperand SlcGenInterCode::CreateBuiltInDeriv(BuiltInCall& call)
{
    if (call.args[0]->IsUniform() || call.args[1]->IsUniform()) {
        WarnOfZero(call, "Deriv() will always return 0, since at least one of its parameters is "
                         "uniform.");
        return GenZero(call);
    }
    return GenDerivative(
        call, SlcElements::ValueType(call.args[0]),
        "Calling Deriv() inside a varying conditional can lead to unexpected results.");
}

SlcOperand SlcGenInterCode::CreateBuiltInArea(BuiltInCall& call)
{
    if (call.args[0]->IsUniform()) {
        WarnOfZero(call, "area() will always return 0 since its parameter is uniform.");
        return GenZero(call);
    }
    return GenDerivative(
        call, SlcTypeNode::AFloat(),
        "Calling area() inside a varying conditional can lead to unexpected results.");
}

SlcOperand SlcGenInterCode::CreateBuiltInCalculateNormal(BuiltInCall& call)
{
    if (call.args[0]->IsUniform()) {
        WarnOfZero(call, "calculatenormal() will always return 0 since its parameter is uniform.");
        return GenZero(call);
    }
    SlcTypeNode* type = SlcElements::ValueType(call.args[0]);
    call.args.push_back(PredefinedOperand(Hiddens::sm_du, call, "CreateBuiltInCalculateNormal"));
    call.args.push_back(PredefinedOperand(Hiddens::sm_dv, call, "CreateBuiltInCalculateNormal"));
    return GenDerivative(
        call, type,
        "Calling calculatenormal() inside a varying conditional can lead to unexpected results.");
}

void SlcGenInterCode::WarnOfZero(const BuiltInCall& call, const char* text)
{
    m_errors->Warning(call.node, text, 1);
}

SlcOperand SlcGenInterCode::GenZero(const BuiltInCall& call)
{
    SlcTypeNode* type = TypeOfCall(call.node);
    const SlcOperand zero = SlcLexType::Float(0);
    if (type->IsFloatType())
        return zero;
    SlcDetailNode* uniform = SlcDetailNode::AUniform();
    const SlcOperand result = m_list.GetResultVar(call.node, type, uniform);
    if (type->IsColorType())
        m_conditions.AddInBlock(uniform, MakeShared<SlcColorICode>(result, zero, zero, zero));
    else
        m_conditions.AddInBlock(uniform, MakeShared<SlcPointICode>(result, zero, zero, zero));
    return result;
}

SlcOperand SlcGenInterCode::PredefinedOperand(const SlcPtr<SlcVarSymbolEntry>& entry,
                                              const BuiltInCall& call, const char* function)
{
    if (entry.Null() || entry->GetIntCodeVar().Null())
        m_errors->FatalError(call.node, "Cannot find '" + call.node->GetIdent()->GetName() +
                                            "' in symbol table (" + function + ")");
    return entry->GetIntCodeVar();
}

/// `typeInCondition`: of the temporary that takes the result under a varying condition, where the
/// points outside the condition are left alone in the target.
SlcOperand SlcGenInterCode::GenDerivative(const BuiltInCall& call, SlcTypeNode* typeInCondition,
                                          const char* warning)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    if (!m_conditions.IsInParallelIf()) {
        const SlcOperand result = m_list.GetResultVar(call.node, TypeOfCall(call.node), varying);
        AddGridCall(call, result, nullptr);
        return result;
    }
    m_errors->Warning(call.node, warning, 2);
    const SlcOperand result = m_list.GenTempVar(typeInCondition, varying);
    // Without a flag that can limit the call it runs for all points; who reads the temporary is
    // guarded.
    AddGridCall(call, result, m_conditions.SimdCondition());
    return result;
}
