// Conditional statements and expressions.
//
// A uniform condition jumps. A varying one runs both branches, one after the other, each for the
// points where its flag is true; the second takes the same flag, inverted in place.

#include "icode/SlcGenInterCode.h"

#include <utility>

#include "symbols/SlcPossibleTypes.h"

namespace {

/// Tells whether an expression may read values of other points, or run code of its own.
class FindCalls : public SlcCodeWalker {
public:
    [[nodiscard]] bool In(SlcSyntaxNode* expr)
    {
        expr->ApplyWalker(this);
        return m_found;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcProcCallExprNode*) override { m_found = true; }
    void Case(SlcTextureExprNode*) override { m_found = true; }
    void Default(SlcSyntaxNode* node) override
    {
        if (!m_found)
            node->WalkIn(this);
    }

    bool m_found = false;
};

}  // namespace

SlcOperand SlcGenInterCode::GenCondition(SlcIfThenStmtNode* node)
{
    GenLineNumberInfo(node);
    const bool outer =
        std::exchange(m_flagCopyNeeded, node->ContainsBreakOrContinue() && !m_withoutGrid);
    SlcOperand flag = GenRelation(node->GetCondition(), nullptr, false);
    m_flagCopyNeeded = outer;
    return flag;
}

void SlcGenInterCode::GenBranch(SlcStmtNode* branch, const SlcOperand& flag,
                                const SlcOperand& uniformFlag)
{
    AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    EnterCondition(flag, uniformFlag);
    branch->ApplyWalker(this);
    LeaveCondition();
}

void SlcGenInterCode::Case(SlcIfThenStmtNode* node)
{
    const SlcOperand flag = GenCondition(node);
    if (flag->IsUniform()) {
        const SlcLabel end = GenLabel();
        GenSkipWithoutPoints(end);
        AddICode(MakeShared<SlcIfFalseGotoICode>(flag, end));
        node->GetThen()->ApplyWalker(this);
        AddICode(end);
    } else {
        const SlcOperand uniformFlag = GetBoolFlag(SlcDetailNode::AUniform());
        GenBranch(node->GetThen(), flag, uniformFlag);
        ReleaseBoolFlag(uniformFlag);
    }
    ReleaseBoolFlag(flag);
}

void SlcGenInterCode::Case(SlcIfThenElseStmtNode* node)
{
    const SlcOperand flag = GenCondition(node);
    if (flag->IsUniform()) {
        const SlcLabel end = GenLabel();
        GenSkipWithoutPoints(end);
        const SlcLabel otherwise = GenLabel();
        AddICode(MakeShared<SlcIfFalseGotoICode>(flag, otherwise));
        node->GetThen()->ApplyWalker(this);
        AddICode(MakeShared<SlcGotoICode>(end));
        AddICode(otherwise);
        node->GetElse()->ApplyWalker(this);
        AddICode(end);
    } else {
        const SlcOperand uniformFlag = GetBoolFlag(SlcDetailNode::AUniform());
        GenBranch(node->GetThen(), flag, uniformFlag);
        AddICode(MakeShared<SlcInvertBoolFlagICode>(flag, flag, InnermostFlag()));
        GenBranch(node->GetElse(), flag, uniformFlag);
        ReleaseBoolFlag(uniformFlag);
    }
    ReleaseBoolFlag(flag);
}

void SlcGenInterCode::Case(SlcCondExprNode* node)
{
    // Copies are for the points that leave a loop, not for those that choose a value.
    const bool outer = std::exchange(m_flagCopyNeeded, false);
    const SlcOperand flag = GenRelation(node->GetCondition(), nullptr, false);
    if (flag->IsUniform())
        GenUniformCondExpr(node, flag);
    else
        GenVaryingCondExpr(node, flag);
    m_flagCopyNeeded = outer;
    ReleaseBoolFlag(flag);
}

void SlcGenInterCode::GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag)
{
    const SlcLabel otherwise = GenLabel();
    const SlcLabel end = GenLabel();
    // Without active points nothing has set the flag, and nobody reads the value.
    GenSkipWithoutPoints(end);
    AddICode(MakeShared<SlcIfFalseGotoICode>(flag, otherwise));
    SlcOperand value = Evaluate(node->GetThen());
    const SlcOperand result = GetResultVar(node, TypeOf(node), DetailOf(node));
    GenPlainAssignment(result, value);
    AddICode(MakeShared<SlcGotoICode>(end));
    AddICode(otherwise);
    value = Evaluate(node->GetElse());
    GenPlainAssignment(result, value);
    AddICode(end);
    Push(result);
}

void SlcGenInterCode::GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag)
{
    const SlcOperand thenFlag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    const SlcOperand elseFlag = GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    AddICode(MakeShared<SlcSetUniformBoolFlagICode>(thenFlag, flag));
    EnterCondition(flag, thenFlag);
    SlcOperand value = Evaluate(node->GetThen());
    // A call in the other branch may read the target of the assignment at points set here.
    const bool callFollows = FindCalls().In(node->GetElse());
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const SlcOperand result =
        callFollows ? GenTempVar(TypeOf(node), varying) : GetResultVar(node, TypeOf(node), varying);
    GenPlainAssignment(result, value);
    LeaveCondition();

    AddICode(MakeShared<SlcInvertBoolFlagICode>(flag, flag, InnermostFlag()));
    AddICode(MakeShared<SlcSetUniformBoolFlagICode>(elseFlag, flag));
    EnterCondition(flag, elseFlag);
    value = Evaluate(node->GetElse());
    GenPlainAssignment(result, value);
    LeaveCondition();
    Push(result);
}
