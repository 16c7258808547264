// Lowers conditional statements and expressions.
//
// A uniform condition becomes a jump. With a varying condition both branches run, one after the
// other, each for the points where its flag is true; the second branch uses the same flag, inverted
// in place. On a grid, the condition of an `if` that a `break`, `continue` or `return` leaves
// always gets a varying flag, which can be cleared at the points that leave.
//
//     if (u) S; else T;      goto B if not u; S; goto E; B: T; E:             u uniform
//     if (v) S; else T;      a = any v; under v: S; v = not v; a = any v; under v: T
//
// A conditional expression is lowered the same way, with one variable for both values. In a list
// that runs without a grid every condition is uniform.
//
// Tested by tests/lowering/SlcGenInterCodeConditionsTest.cpp.

#include "lowering/SlcGenInterCode.h"

#include <utility>

#include "symbols/SlcPossibleTypes.h"

namespace {

/// Determines whether an expression contains a call or a texture access, which may read values of
/// other points or run other code. The answer for each conditional expression is cached, since in a
/// chain of conditional expressions each one queries all that follow it.
class FindCalls : public SlcCodeWalker {
public:
    /// `known` caches the answers for conditional expressions, and must outlive this object.
    explicit FindCalls(std::unordered_map<const SlcSyntaxNode*, bool>& known) : m_known(known) {}

    [[nodiscard]] bool In(SlcSyntaxNode* expr)
    {
        expr->ApplyWalker(this);
        return m_found;
    }

private:
    using SlcCodeWalker::Case;
    void Case(SlcCondExprNode* node) override
    {
        if (m_found)
            return;
        if (const auto known = m_known.find(node); known != m_known.end()) {
            m_found = known->second;
            return;
        }
        node->WalkIn(this);
        m_known.emplace(node, m_found);
    }
    void Case(SlcProcCallExprNode*) override { m_found = true; }
    void Case(SlcTextureExprNode*) override { m_found = true; }
    void Default(SlcSyntaxNode* node) override
    {
        if (!m_found)
            node->WalkIn(this);
    }

    std::unordered_map<const SlcSyntaxNode*, bool>& m_known;
    bool m_found = false;
};

}  // namespace

SlcOperand SlcGenInterCode::GenCondition(SlcIfThenStmtNode* node)
{
    GenLineNumberInfo(node);
    const bool outer =
        std::exchange(m_flagCopyNeeded, node->ContainsBreakOrContinue() && !m_list.IsWithoutGrid());
    SlcOperand flag = GenRelation(node->GetCondition(), nullptr, false);
    m_flagCopyNeeded = outer;
    return flag;
}

void SlcGenInterCode::GenBranch(SlcStmtNode* branch, const SlcOperand& flag,
                                const SlcOperand& uniformFlag)
{
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    m_conditions.EnterCondition(flag, uniformFlag);
    branch->ApplyWalker(this);
    m_conditions.LeaveCondition();
}

void SlcGenInterCode::Case(SlcIfThenStmtNode* node)
{
    const SlcOperand flag = GenCondition(node);
    if (flag->IsUniform()) {
        const SlcLabel end = m_list.GenLabel();
        m_conditions.GenSkipWithoutPoints(end);
        m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(flag, end));
        node->GetThen()->ApplyWalker(this);
        m_list.AddICode(end);
    } else {
        const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
        GenBranch(node->GetThen(), flag, uniformFlag);
        m_conditions.ReleaseBoolFlag(uniformFlag);
    }
    m_conditions.ReleaseBoolFlag(flag);
}

void SlcGenInterCode::Case(SlcIfThenElseStmtNode* node)
{
    const SlcOperand flag = GenCondition(node);
    if (flag->IsUniform()) {
        const SlcLabel end = m_list.GenLabel();
        m_conditions.GenSkipWithoutPoints(end);
        const SlcLabel otherwise = m_list.GenLabel();
        m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(flag, otherwise));
        node->GetThen()->ApplyWalker(this);
        m_list.AddICode(MakeShared<SlcGotoICode>(end));
        m_list.AddICode(otherwise);
        node->GetElse()->ApplyWalker(this);
        m_list.AddICode(end);
    } else {
        const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
        GenBranch(node->GetThen(), flag, uniformFlag);
        m_list.AddICode(
            MakeShared<SlcInvertBoolFlagICode>(flag, flag, m_conditions.InnermostFlag()));
        GenBranch(node->GetElse(), flag, uniformFlag);
        m_conditions.ReleaseBoolFlag(uniformFlag);
    }
    m_conditions.ReleaseBoolFlag(flag);
}

void SlcGenInterCode::Case(SlcCondExprNode* node)
{
    // Points that leave a statement early need a varying flag; points that select a value do not.
    const bool outer = std::exchange(m_flagCopyNeeded, false);
    const SlcOperand flag = GenRelation(node->GetCondition(), nullptr, false);
    if (flag->IsUniform())
        GenUniformCondExpr(node, flag);
    else
        GenVaryingCondExpr(node, flag);
    m_flagCopyNeeded = outer;
    m_conditions.ReleaseBoolFlag(flag);
}

void SlcGenInterCode::GenUniformCondExpr(SlcCondExprNode* node, const SlcOperand& flag)
{
    const SlcLabel otherwise = m_list.GenLabel();
    const SlcLabel end = m_list.GenLabel();
    // Without active points the flag has not been set, and the value is not read.
    m_conditions.GenSkipWithoutPoints(end);
    m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(flag, otherwise));
    SlcOperand value = Evaluate(node->GetThen());
    const SlcOperand result =
        m_list.GetResultVar(node, SlcLoweringContext::TypeOf(node), m_context.DetailOf(node));
    m_conditions.GenPlainAssignment(result, value);
    m_list.AddICode(MakeShared<SlcGotoICode>(end));
    m_list.AddICode(otherwise);
    value = Evaluate(node->GetElse());
    m_conditions.GenPlainAssignment(result, value);
    m_list.AddICode(end);
    m_values.Push(result);
}

void SlcGenInterCode::GenVaryingCondExpr(SlcCondExprNode* node, const SlcOperand& flag)
{
    const SlcOperand thenFlag =
        m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    const SlcOperand elseFlag =
        m_list.GenTempVar(SlcTypeNode::ABoolean(), SlcDetailNode::AUniform());
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(thenFlag, flag));
    m_conditions.EnterCondition(flag, thenFlag);
    SlcOperand value = Evaluate(node->GetThen());
    // A call in the other branch may read the target of the assignment at points written here.
    const bool callFollows = FindCalls(m_condExprsWithCalls).In(node->GetElse());
    SlcDetailNode* varying = SlcDetailNode::AVarying();
    const SlcOperand result =
        callFollows ? m_list.GenTempVar(SlcLoweringContext::TypeOf(node), varying)
                    : m_list.GetResultVar(node, SlcLoweringContext::TypeOf(node), varying);
    m_conditions.GenPlainAssignment(result, value);
    m_conditions.LeaveCondition();

    m_list.AddICode(MakeShared<SlcInvertBoolFlagICode>(flag, flag, m_conditions.InnermostFlag()));
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(elseFlag, flag));
    m_conditions.EnterCondition(flag, elseFlag);
    value = Evaluate(node->GetElse());
    m_conditions.GenPlainAssignment(result, value);
    m_conditions.LeaveCondition();
    m_values.Push(result);
}
