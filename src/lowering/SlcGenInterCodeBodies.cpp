// Expands bodies of functions in place.
//
// If no `return` is inside a condition, a loop or a light statement, the first one ends the body:
// no code is emitted after it. Otherwise some points may return earlier than others. Then the body
// is lowered as a varying loop with one iteration, and its `return` clears the flags of the points
// like a `break`. In a list that runs without a grid, such a `return` jumps to the end.
//
//     float early(float x) { if (x > 0) return 1; z = x; }       y = early(s)
// becomes, simplified,
//     {; r = 0; f = true; }; {; if f; g = s > 0; endif; }
//     {; if g; r = 1; break g f; endif; }; {; if f; z = s; endif; }; {; y = r; }
//
// Semantic analysis allows only one `return` in a body, but this code does not rely on that.
//
// Tested by tests/lowering/SlcGenInterCodeBodiesTest.cpp.

#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

namespace {

/// Determines whether a body returns inside a condition, a loop or a light statement.
class FindEarlyReturn : public SlcCodeWalker {
public:
    [[nodiscard]] bool In(SlcStmtNode* body)
    {
        body->ApplyWalker(this);
        return m_found;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcIfThenStmtNode* node) override { WalkInside(node); }
    void Case(SlcIfThenElseStmtNode* node) override { WalkInside(node); }
    void Case(SlcLoopStmtNode* node) override { WalkInside(node); }
    void Case(SlcReturnStmtNode*) override { m_found = m_found || m_depth > 0; }
    void Case(SlcStmtsNode* node) override { node->WalkIn(this); }
    void Default(SlcSyntaxNode*) override {}

    void WalkInside(SlcStmtNode* node)
    {
        ++m_depth;
        node->WalkIn(this);
        --m_depth;
    }

    int m_depth = 0;  // nesting of conditions, loops and light statements
    bool m_found = false;
};

SlcOperand ZeroOf(const SlcTypeNode& type)
{
    if (const auto* array = dynamic_cast<const SlcArrayTypeNode*>(&type))
        return ZeroOf(*array->GetElementType());
    return type.IsStringType() ? SlcLexType::String("\"\"") : SlcLexType::Float(0);
}

}  // namespace

void SlcGenInterCode::GenFuncBody(SlcProcCallExprNode* call, SlcStmtNode* body)
{
    // Most bodies have no early `return`, and need no flag and no variable for the result.
    if (FindEarlyReturn().In(body) && m_list.IsWithoutGrid())
        GenBodyWithJumps(call, body);
    else if (FindEarlyReturn().In(body))
        GenBodyAsLoop(call, body);
    else
        GenPlainBody(call, body);
}

void SlcGenInterCode::GenPlainBody(SlcProcCallExprNode* call, SlcStmtNode* body)
{
    const std::size_t valuesBefore = m_values.Size();
    m_leaving.BeginBody({nullptr, nullptr, nullptr, call});
    body->ApplyWalker(this);
    m_leaving.EndBody();
    if (SlcLoweringContext::TypeOf(call)->IsVoidType() || m_values.Size() > valuesBefore)
        return;
    const SlcOperand result =
        m_list.GetResultVar(call, TypeOfResult(call), SlcDetailNode::AUniform());
    GenZero(result);
    m_values.Push(result);
}

SlcTypeNode* SlcGenInterCode::TypeOfResult(SlcProcCallExprNode* call)
{
    SlcTypeNode* type = SlcLoweringContext::TypeOf(call);
    if (!type->IsArrayType())
        return type;
    type = SlcCallArguments::TypeOfCall(call);
    const auto* array = static_cast<const SlcArrayTypeNode*>(type);
    if (array->GetLength() != SlcDefExprNode::k_unspecifiedSize)
        return type;
    m_errors->Error(call, "The length of the result of '" + call->GetIdent()->GetName() +
                              "' function is unknown");
    return SlcTypeNode::CreateArrayType(array->GetElementType(), 1);
}

void SlcGenInterCode::GenCopy(const SlcOperand& result, const SlcOperand& value)
{
    if (result->GetType()->IsArrayType())
        m_elements.GenArrayCopy(result, value);
    else
        m_conditions.GenPlainAssignment(result, value);
}

void SlcGenInterCode::GenZero(const SlcOperand& result)
{
    const SlcOperand zero = ZeroOf(*result->GetType());
    if (result->GetType()->IsArrayType())
        m_elements.GenArrayFill(result, zero);
    else
        m_conditions.AddInBlock(result->GetDetail(), MakeShared<SlcAssignICode>(result, zero));
}

SlcOperand SlcGenInterCode::GenResultOfEarlyReturns(SlcProcCallExprNode* call)
{
    if (SlcLoweringContext::TypeOf(call)->IsVoidType())
        return nullptr;
    // Not from the pool, since the statements of the body would release it.
    SlcOperand result = m_list.MakeTempVar(TypeOfResult(call), SlcDetailNode::AVarying());
    GenZero(result);
    return result;
}

void SlcGenInterCode::GenBodyWithJumps(SlcProcCallExprNode* call, SlcStmtNode* body)
{
    const SlcOperand result = GenResultOfEarlyReturns(call);
    const SlcLabel end = m_list.GenLabel();
    m_leaving.BeginBody({nullptr, result, end, call});
    body->ApplyWalker(this);
    m_leaving.EndBody();
    m_list.AddICode(end);
    if (result)
        m_values.Push(result);
}

void SlcGenInterCode::GenBodyAsLoop(SlcProcCallExprNode* call, SlcStmtNode* body)
{
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    SlcOperand result = GenResultOfEarlyReturns(call);
    const SlcOperand flag = m_conditions.GetBoolFlag(varying);
    const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
    const SlcLabel end = m_list.GenLabel();
    m_conditions.GenAllActive(flag);
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    m_leaving.BeginBody({flag, result, end, call});
    m_conditions.EnterCondition(flag, uniformFlag);
    body->ApplyWalker(this);
    m_conditions.LeaveCondition();
    m_leaving.EndBody();
    m_list.AddICode(end);
    m_conditions.ReleaseBoolFlag(uniformFlag);
    m_conditions.ReleaseBoolFlag(flag);
    if (result.Null())
        return;
    if (m_context.DetailOf(call)->IsUniform()) {
        // All points return the same value.
        const SlcOperand uniformResult =
            m_list.GenTempVar(result->GetType(), SlcDetailNode::AUniform());
        GenCopy(uniformResult, result);
        result = uniformResult;
    }
    m_values.Push(result);
}

void SlcGenInterCode::Case(SlcReturnStmtNode* node)
{
    GenLineNumberInfo(node);
    // Copied, since the value may contain a call, and pushing its body may move this one.
    const SlcLeaving::Body body = m_leaving.CurrentBody();
    if (body.end.Null()) {
        node->WalkIn(this);
        m_leaving.CurrentBody().ended = true;
        return;
    }
    if (node->GetValue()) {
        const SlcOperand value = Evaluate(node->GetValue());
        SlcTypeNode* type = SlcCallArguments::TypeOfCall(body.call);
        GenCopy(body.result, type->IsArrayType() ? m_arguments.ConvertedForCall(body.call, value,
                                                                                type, "the result")
                                                 : value);
    }
    m_leaving.GenReturn();
    m_list.ReleaseTempVars();
}
