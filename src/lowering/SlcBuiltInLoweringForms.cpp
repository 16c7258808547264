// Built-ins whose argument lists are rewritten:
//
//     spline(x, a)              spline(x, a[0], a[1], ...)       a an array
//     filterstep(e, s)          filterstep(e, s, far end of the point's interval, 1, "catmull-rom")
//     attribute("n", v)         attribute("n", v, whether v is varying, its type, its length)
//
// and `shadername`, which is not supported: it yields an empty text and a warning.
//
// Tested by tests/lowering/SlcBuiltInLoweringTest.cpp.

#include "frontend/SlcNodes.h"
#include "icode/SlcICodes.h"
#include "lowering/SlcBuiltInLowering.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcInterfaceQxLib.h"
#include "symbols/SlcPossibleTypes.h"

/// Passes the elements as separate arguments, as the primitive requires.
SlcOperand SlcBuiltInLowering::CreateBuiltInSpline(BuiltInCall& call)
{
    const SlcOperand array = call.args.back();
    call.args.pop_back();
    SlcDetailNode* detail = SlcConditions::UniformIfAll(call.args);
    SlcDetailNode* elementDetail =
        array->IsUniform() ? SlcDetailNode::AUniform() : SlcDetailNode::AVarying();
    const int length = static_cast<const SlcArrayTypeNode*>(array->GetType())->GetLength();
    for (int i = 0; i < length; ++i) {
        m_conditions.AddBeginBlock(elementDetail);
        call.args.push_back(m_elements.GenElementRef(array, SlcLexType::Float(i), elementDetail));
        m_conditions.AddEndBlock(elementDetail);
    }
    detail = SlcDetailNode::Combine(detail, elementDetail);
    const SlcOperand result =
        m_list.GetResultVar(call.node, SlcCallArguments::TypeOfCall(call.node), detail);
    AddPlainCall(call, result, ArgumentList::Counted, detail);
    return result;
}

SlcOperand SlcBuiltInLowering::CreateBuiltInFilterstep(BuiltInCall& call)
{
    SlcOperand width = SlcLexType::Float(1);
    SlcOperand filter = SlcLexType::String("\"catmull-rom\"");
    const std::deque<SlcOperand> given = call.args;
    const bool hasInterval = given.size() > 2 && given[2]->GetType()->IsFloatType();
    for (std::size_t i = hasInterval ? 3 : 2; i + 1 < given.size(); i += 2) {
        if (!given[i]->IsString())
            continue;
        if (given[i]->GetString() == "\"width\"")
            width = given[i + 1];
        else if (given[i]->GetString() == "\"filter\"")
            filter = given[i + 1];
    }
    const SlcOperand end = hasInterval ? given[2] : GenFilterstepEnd(given[1]);
    call.args = {given[0], given[1], end, width, filter};
    SlcDetailNode* detail = SlcConditions::UniformIfAll(call.args);
    const SlcOperand result = m_list.GetResultVar(call.node, SlcTypeNode::AFloat(), detail);
    if (detail->IsUniform() || !filter->IsUniform())
        AddPlainCall(call, result, ArgumentList::Fixed, detail);
    else
        AddGridOrPlainCall(call, result);
    return result;
}

SlcOperand SlcBuiltInLowering::GenFilterstepEnd(const SlcOperand& start)
{
    if (start->IsUniform())
        return start;
    const SlcOperand end = m_list.GenTempVar(SlcTypeNode::AFloat(), SlcDetailNode::AVarying());
    m_list.AddICode(MakeShared<SlcFilterstepPointsICode>(end, start, m_conditions.SimdCondition()));
    return end;
}

/// The last argument receives the answer. Passes its detail, type and length as additional
/// arguments, since the run time cannot determine them.
SlcOperand SlcBuiltInLowering::CreateBuiltInMessageFunction(BuiltInCall& call)
{
    const SlcOperand answer = call.args.back();
    const auto* array = dynamic_cast<const SlcArrayTypeNode*>(answer->GetType());
    const SlcTypeNode* type = array ? array->GetElementType() : answer->GetType();
    const bool uniformQuestion = DetailOfQuery(call)->IsUniform();
    call.args.push_back(SlcLexType::Float(answer->IsUniform() ? 0 : 1));
    call.args.push_back(SlcLexType::Float(SlcInterfaceQxLib::SlcTypeNodeToQxType(type)));
    call.args.push_back(SlcLexType::Float(array ? array->GetLength() : 1));
    SlcDetailNode* uniform = SlcDetailNode::AUniform();
    const SlcOperand result = GetCallResult(call, SlcTypeNode::AFloat(), uniform);
    if (!uniformQuestion)
        AddPlainCall(call, result, ArgumentList::Fixed, SlcDetailNode::AVarying());
    else if (answer->IsUniform())
        AddPlainCall(call, result, ArgumentList::Fixed, uniform);
    else
        AddGridOrPlainCall(call, result);
    return result;
}

SlcDetailNode* SlcBuiltInLowering::DetailOfQuery(const BuiltInCall& call)
{
    std::deque<SlcOperand> question = call.args;
    question.pop_back();
    return SlcConditions::UniformIfAll(question);
}

SlcOperand SlcBuiltInLowering::CreateBuiltInShaderName(BuiltInCall& call)
{
    m_errors->Warning(call.node,
                      "'" + call.node->GetIdent()->GetName() +
                          "' function not yet implemented. "
                          " Will always return the empty string.",
                      1);
    return SlcLexType::String("\"\"");
}
