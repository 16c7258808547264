// Lowers relations (comparisons and logical operators) to flags.
//
// Negation is pushed down to the comparisons by De Morgan's law. The right side of an operator is
// guarded by a flag that the left side determines, so its blocks run only where the left side has
// not decided the result. If the left side is uniform, this flag replaces all enclosing guards, so
// inactive points also get a value, and the result is cleared there afterwards. That would be too
// late if the right side has side effects, may read outside an array, or contains conditional
// expressions, other logical operators or calls of functions that are not built-in. Such a right
// side stays under all enclosing conditions, and is skipped by a jump where it must not run.
//
//     a && b      f = a; any f; under f: f = b                             varying a
//     a || b      f = a; r = not f; any r; under r: r = b; f = f or r      varying a
//     !(a && b)   as !a || !b
//
// Tested by tests/lowering/SlcGenInterCodeRelationsTest.cpp.

#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"

namespace {

/// Returns null for an operator without an instruction.
SlcPtr<SlcICode> MakeComparison(const SlcCompOpNode* node, bool inverted, const SlcOperand& flag,
                                const SlcOperand& left, const SlcOperand& right)
{
    if (inverted ? node->IsGreaterEqual() : node->IsLessThen())
        return MakeShared<SlcLessThenICode>(flag, left, right);
    if (inverted ? node->IsGreaterThen() : node->IsLessEqual())
        return MakeShared<SlcLessEqualICode>(flag, left, right);
    if (inverted ? node->IsLessEqual() : node->IsGreaterThen())
        return MakeShared<SlcGreaterThenICode>(flag, left, right);
    if (inverted ? node->IsLessThen() : node->IsGreaterEqual())
        return MakeShared<SlcGreaterEqualICode>(flag, left, right);
    if (inverted ? node->IsNotEqual() : node->IsEqual())
        return MakeShared<SlcEqualICode>(flag, left, right);
    if (inverted ? node->IsEqual() : node->IsNotEqual())
        return MakeShared<SlcNotEqualICode>(flag, left, right);
    return nullptr;
}

SlcPtr<SlcBoolExprResult> Wanted(const SlcRelationNode* node)
{
    return CheckCast<SlcBoolExprResult>(node->GetAnnotation());
}

}  // namespace

SlcOperand SlcGenInterCode::GenRelation(SlcRelationNode* relation, const SlcOperand& target,
                                        bool inverted)
{
    relation->SetAnnotation(MakeShared<SlcBoolExprResult>(target, inverted));
    relation->ApplyWalker(this);
    return m_values.PopReference();
}

void SlcGenInterCode::Case(SlcNotRelNode* node)
{
    const auto wanted = Wanted(node);
    bool inverted = !wanted->IsInverted();
    SlcRelationNode* relation = node->GetRelation();
    while (auto* negation = dynamic_cast<SlcNotRelNode*>(relation)) {
        inverted = !inverted;
        relation = negation->GetRelation();
    }
    relation->SetAnnotation(MakeShared<SlcBoolExprResult>(wanted->GetResult(), inverted));
    relation->ApplyWalker(this);
}

void SlcGenInterCode::Case(SlcCompOpNode* node)
{
    node->WalkIn(this);
    GenComparison(node);
}

void SlcGenInterCode::GenComparison(SlcCompOpNode* node)
{
    SlcOperand right = m_values.Pop();
    SlcOperand left = m_values.Pop();
    m_context.MatchColors(left, right);
    const auto wanted = Wanted(node);
    const SlcOperand& target = wanted->GetResult();
    SlcOperand flag = FlagFor(target, SlcConditions::UniformIfAll({left, right}));
    const SlcPtr<SlcICode> code = MakeComparison(node, wanted->IsInverted(), flag, left, right);
    if (code.Null())
        m_errors->FatalError(node, "Invalid operator while generating i-code for rel op");
    m_conditions.AddInBlock(flag->GetDetail(), code);

    // Points that leave a statement early need a varying flag, even if the decision is the same
    // for all.
    if (flag->IsUniform() && m_flagCopyNeeded)
        flag = CopiedFlag(flag, m_conditions.GetBoolFlag(SlcDetailNode::AVarying()));
    if (flag->IsUniform() && target && !target->IsUniform())
        flag = CopiedFlag(flag, target);
    m_conditions.ClearOutsideCondition(flag);
    m_values.Push(flag);
}

SlcOperand SlcGenInterCode::FlagFor(const SlcOperand& target, SlcDetailNode* detail)
{
    if (target.Null() || (detail->IsUniform() && !target->IsUniform()))
        return m_conditions.GetBoolFlag(detail);
    if (detail->IsUniform() || !target->IsUniform())
        return target;
    // `target` holds the value of a uniform left side, which is the result where this comparison
    // does not run.
    SlcOperand flag = m_conditions.GetBoolFlag(detail);
    m_conditions.AssignOutsideCondition(flag, target);
    return flag;
}

SlcOperand SlcGenInterCode::CopiedFlag(const SlcOperand& flag, const SlcOperand& copy)
{
    m_conditions.AddInBlock(SlcDetailNode::AVarying(), MakeShared<SlcAssignICode>(copy, flag));
    m_conditions.ReleaseBoolFlag(flag);
    return copy;
}

/// Walks down the left sides in a loop instead of recursing: the nesting depth of a chain of
/// operators equals its length.
void SlcGenInterCode::Case(SlcLogOpNode* node)
{
    const auto wanted = Wanted(node);
    SlcOperand target = wanted->GetResult();
    const bool inverted = wanted->IsInverted();
    std::vector<SlcLogOpNode*> chain;
    SlcRelationNode* left = node;
    while (auto* logOp = dynamic_cast<SlcLogOpNode*>(left)) {
        chain.push_back(logOp);
        // A flag must not be overwritten while it guards its own computation.
        if (logOp->IsLogAnd() == inverted && target && !target->IsUniform() &&
            target == m_conditions.InnermostFlag())
            target = m_conditions.GetBoolFlag(SlcDetailNode::AVarying());
        left = logOp->GetLeft();
    }
    SlcOperand flag = GenRelation(left, target, inverted);
    for (; !chain.empty(); chain.pop_back()) {
        SlcLogOpNode* logOp = chain.back();
        flag = logOp->IsLogAnd() == inverted ? GenLogOrCode(logOp, flag, inverted)
                                             : GenLogAndCode(logOp, flag, inverted);
    }
    m_values.Push(flag);
}

SlcOperand SlcGenInterCode::GenLogAndCode(SlcLogOpNode* node, const SlcOperand& flag, bool inverted)
{
    if (flag->IsUniform())
        return GenUniformLogOp(node, flag, inverted, SlcConditions::AssignIfValue::IfTrue);
    const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, flag));
    m_conditions.EnterCondition(flag, uniformFlag);
    SlcOperand result = GenRelation(node->GetRight(), flag, inverted);
    m_conditions.LeaveCondition();
    m_conditions.ReleaseBoolFlag(uniformFlag);
    return result;
}

SlcOperand SlcGenInterCode::GenLogOrCode(SlcLogOpNode* node, const SlcOperand& flag, bool inverted)
{
    if (flag->IsUniform())
        return GenUniformLogOp(node, flag, inverted, SlcConditions::AssignIfValue::IfFalse);
    // Marks the active points where `flag` is false.
    const SlcOperand rest = m_conditions.GetBoolFlag(SlcDetailNode::AVarying());
    const SlcOperand uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
    m_list.AddICode(MakeShared<SlcInvertBoolFlagICode>(rest, flag, m_conditions.InnermostFlag()));
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(uniformFlag, rest));
    // In a right side that needs the guard, whole-grid forms must compute only the points of
    // `rest`, and flags must be false at all others.
    m_conditions.BeginAssignIfTrue(rest, uniformFlag);
    if (node->RightNeedsGuard())
        m_conditions.InsideParallelCond();
    const SlcOperand right = GenRelation(node->GetRight(), rest, inverted);
    if (node->RightNeedsGuard())
        m_conditions.OutsideParallelCond();
    m_conditions.EndAssignIfTrue();
    m_list.AddICode(MakeShared<SlcOrBoolFlagICode>(flag, flag, right));
    m_conditions.ReleaseBoolFlag(uniformFlag);
    m_conditions.ReleaseBoolFlag(right);
    if (!(right == rest))
        m_conditions.ReleaseBoolFlag(rest);
    return flag;
}

/// The blocks of the right side run only if `flag`, the value of the left side, is `state`; its
/// whole-grid forms, which then have no side effects, may run in any case. This guard replaces the
/// enclosing guards. `GenUniformLogOpWithJump` lowers a right side that must run only under them.
SlcOperand SlcGenInterCode::GenUniformLogOp(SlcLogOpNode* node, const SlcOperand& flag,
                                            bool inverted, SlcConditions::AssignIfValue state)
{
    if (node->RightNeedsGuard() || (node->RightReadsElement() && !m_conditions.Levels().empty()))
        return GenUniformLogOpWithJump(node, flag, inverted, state);
    if (state == SlcConditions::AssignIfValue::IfTrue)
        m_conditions.BeginAssignIfTrue(flag, flag);
    else
        m_conditions.BeginAssignIfFalse(flag, flag);
    const SlcOperand result = GenRelation(node->GetRight(), flag, inverted);
    if (state == SlcConditions::AssignIfValue::IfTrue)
        m_conditions.EndAssignIfTrue();
    else
        m_conditions.EndAssignIfFalse();
    m_conditions.ClearOutsideCondition(result);
    if (!(result == flag))
        m_conditions.ReleaseBoolFlag(flag);
    return result;
}

SlcOperand SlcGenInterCode::GenUniformLogOpWithJump(SlcLogOpNode* node, const SlcOperand& flag,
                                                    bool inverted,
                                                    SlcConditions::AssignIfValue state)
{
    const SlcLabel decided = m_list.GenLabel();
    m_conditions.GenSkipWithoutPoints(decided);
    if (state == SlcConditions::AssignIfValue::IfTrue)
        m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(flag, decided));
    else
        m_list.AddICode(MakeShared<SlcIfTrueGotoICode>(flag, decided));
    SlcOperand result = GenRelation(node->GetRight(), nullptr, inverted);
    if (result->IsUniform()) {
        m_conditions.AddInBlock(SlcDetailNode::AUniform(),
                                MakeShared<SlcAssignICode>(flag, result));
        m_list.AddICode(decided);
        m_conditions.ReleaseBoolFlag(result);
        return flag;
    }
    const SlcLabel end = m_list.GenLabel();
    m_list.AddICode(MakeShared<SlcGotoICode>(end));
    m_list.AddICode(decided);
    m_conditions.AddInBlock(SlcDetailNode::AVarying(), MakeShared<SlcAssignICode>(result, flag));
    m_conditions.ClearOutsideCondition(result);
    m_list.AddICode(end);
    m_conditions.ReleaseBoolFlag(flag);
    return result;
}
