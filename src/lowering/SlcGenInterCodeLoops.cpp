// Lowers loops, and the statements that leave them.
//
// A loop runs until no point remains in it; its flag marks the remaining points. If the relation is
// uniform and, on a grid, no statement in the body leaves the loop or an iteration early, a jump
// leaves the loop for all points. With code motion the loop is rotated: the test is emitted before
// the loop and again at its end, so that hoisted code does not run if the loop does not.
//
//     while (c) S      f = active; L: TEST; under f: S; goto L; E:
//     code motion      f = active; TEST; L: under f: S; TEST; goto L; E:
//     TEST             f = c under f; goto E if no f
//
// In a list that runs without a grid, all flags are uniform and cannot mark single points; there,
// statements that leave a loop are jumps.
//
// Tested by tests/lowering/SlcGenInterCodeLoopsTest.cpp.

#include <utility>

#include "lowering/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

void SlcGenInterCode::Case(SlcWhileStmtNode* node)
{
    GenLineNumberInfo(node);
    LoopTest test = BeginLoop(node, node->GetCondition());
    if (test.cond->IsUniform())
        GenUniformLoopBody(node, test, m_list.IsWithoutGrid() ? m_list.GenLabel() : nullptr);
    else
        static_cast<void>(GenParallelLoopBody(node, test, test.start));
    EndLoop(test);
}

void SlcGenInterCode::Case(SlcForStmtNode* node)
{
    GenLineNumberInfo(node);
    GenUnusedValue(*node->GetInit());
    LoopTest test = BeginLoop(node, node->GetCondition());
    const SlcLabel next = m_list.GenLabel();
    if (test.cond->IsUniform()) {
        GenUniformLoopBody(node, test, next);
        GenUnusedValue(*node->GetStep());
    } else {
        const bool isContinued = GenParallelLoopBody(node, test, next);
        m_list.AddICode(next);
        // The step also runs for the points that executed `continue`.
        if (isContinued)
            m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(test.uniformFlag, test.flag));
        m_conditions.EnterCondition(isContinued ? test.flag : test.cond, test.uniformFlag);
        GenUnusedValue(*node->GetStep());
        m_conditions.LeaveCondition();
    }
    EndLoop(test);
}

void SlcGenInterCode::GenUnusedValue(SlcExprNode& expr)
{
    m_valueUnused = expr.AsAssignExpr() != nullptr;
    expr.ApplyWalker(this);
    if (!SlcLoweringContext::TypeOf(&expr)->IsVoidType())
        static_cast<void>(m_values.PopReference());
}

SlcGenInterCode::LoopTest SlcGenInterCode::BeginLoop(SlcLoopStmtNode* node,
                                                     SlcRelationNode* relation)
{
    LoopTest test;
    test.relation = relation;
    test.containsBreakOrContinue = node->ContainsBreakOrContinue() && !m_list.IsWithoutGrid();
    test.flag = m_conditions.GetBoolFlag(SlcDetailNode::AVarying());
    test.start = m_list.GenLabel();
    test.end = m_list.GenLabel();
    m_conditions.GenAllActive(test.flag);
    if (!m_options.m_codeMotion)
        m_list.AddICode(test.start);
    GenerateLoopCondition(test);
    if (m_options.m_codeMotion)
        m_list.AddICode(test.start);
    return test;
}

void SlcGenInterCode::EndLoop(LoopTest& test)
{
    if (m_options.m_codeMotion)
        GenerateLoopCondition(test);
    m_list.AddICode(MakeShared<SlcGotoICode>(test.start));
    m_list.AddICode(test.end);
    if (test.uniformFlag)
        m_conditions.ReleaseBoolFlag(test.uniformFlag);
    m_conditions.ReleaseBoolFlag(test.cond);
    m_conditions.ReleaseBoolFlag(test.flag);
}

void SlcGenInterCode::GenerateLoopCondition(LoopTest& test)
{
    const bool outerCopy = std::exchange(m_flagCopyNeeded, test.containsBreakOrContinue);
    const SlcOperand upper = m_conditions.InnermostUniformFlag();
    // The guards of the body read the flag that the first test writes, so the second test must
    // write the same flag.
    const bool again = test.cond && !test.cond->IsUniform();
    m_conditions.EnterCondition(test.flag, upper);
    const SlcOperand cond = GenRelation(test.relation, again ? test.cond : nullptr, false);
    m_conditions.LeaveCondition();
    m_flagCopyNeeded = outerCopy;

    if (cond->IsUniform()) {
        m_conditions.GenSkipWithoutPoints(test.end);
        m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(cond, test.end));
        test.cond = cond;
        return;
    }
    if (!again) {
        test.cond = cond;
        test.uniformFlag = m_conditions.GetBoolFlag(SlcDetailNode::AUniform());
    } else if (!(cond == test.cond)) {
        m_list.AddICode(MakeShared<SlcAssignSIMDICode>(test.cond, cond));
        m_conditions.ReleaseBoolFlag(cond);
    }
    m_list.AddICode(MakeShared<SlcAssignSIMDICode>(test.flag, test.cond));
    m_list.AddICode(MakeShared<SlcSetUniformBoolFlagICode>(test.uniformFlag, test.flag));
    m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(test.uniformFlag, test.end));
}

/// `next` is the label after the body, or null.
void SlcGenInterCode::GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                         const SlcLabel& next)
{
    if (m_list.IsWithoutGrid())
        m_leaving.BeginLoopOfJumps(test.end, next);
    node->GetBody()->ApplyWalker(this);
    if (m_list.IsWithoutGrid())
        m_leaving.EndLoopOfJumps();
    if (next)
        m_list.AddICode(next);
}

/// Returns true if the body contains a `continue` of this loop, whose points skip to
/// `continueLabel`.
bool SlcGenInterCode::GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                          const SlcLabel& continueLabel)
{
    m_leaving.BeginParallelLoop(test.flag, test.cond, test.uniformFlag, test.end, continueLabel);
    m_conditions.InsideParallelCond();
    node->GetBody()->ApplyWalker(this);
    m_conditions.OutsideParallelCond();
    const bool isContinued = m_leaving.IsContinued();
    m_leaving.EndParallelLoop();
    return isContinued;
}

void SlcGenInterCode::Case(SlcBreakStmtNode* node)
{
    GenLineNumberInfo(node);
    if (MayLeave(node, "Doesn't yet genearate i-code for 'break' inside uniform loops"))
        m_leaving.GenBreak(static_cast<std::size_t>(node->GetLevel()->GetValue()));
}

void SlcGenInterCode::Case(SlcContinueStmtNode* node)
{
    GenLineNumberInfo(node);
    if (MayLeave(node, "Doesn't yet genearate i-code for 'continue' inside uniform loops"))
        m_leaving.GenContinue(static_cast<std::size_t>(node->GetLevel()->GetValue()));
}

bool SlcGenInterCode::MayLeave(SlcLoopModStmtNode* node, const char* refusal)
{
    if (m_list.IsWithoutGrid())
        return true;
    if (!m_conditions.IsInParallelIf()) {
        m_errors->Error(node, refusal);
        return false;
    }
    if (static_cast<std::size_t>(node->GetLevel()->GetValue()) > m_leaving.CountLoops())
        m_errors->FatalError(node, "Trying to '" + node->ToString() + "' out too much loops");
    return true;
}
