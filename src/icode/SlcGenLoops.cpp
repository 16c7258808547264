// Loops, and the statements that leave them.
//
// A loop runs until no point remains in it; its flag says which do. With code motion the test
// stands in front of the loop and again behind the body, so that what is moved out of the loop
// does not run if the loop does not.
//
// In a list that runs without a grid there is one point, so that all flags would be uniform: there
// the statements that leave a loop are jumps.

#include <utility>

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcPossibleTypes.h"

void SlcGenInterCode::Case(SlcWhileStmtNode* node)
{
    GenLineNumberInfo(node);
    LoopTest test = BeginLoop(node, node->GetCondition());
    if (test.cond->IsUniform())
        GenUniformLoopBody(node, test, m_withoutGrid ? GenLabel() : nullptr);
    else
        static_cast<void>(GenParallelLoopBody(node, test, test.start));
    EndLoop(test);
}

void SlcGenInterCode::Case(SlcForStmtNode* node)
{
    GenLineNumberInfo(node);
    GenUnusedValue(node->GetInit());
    LoopTest test = BeginLoop(node, node->GetCondition());
    const SlcLabel next = GenLabel();
    if (test.cond->IsUniform()) {
        GenUniformLoopBody(node, test, next);
        GenUnusedValue(node->GetStep());
    } else {
        const bool isContinued = GenParallelLoopBody(node, test, next);
        AddICode(next);
        // The step runs also for the points that went on with the next round.
        if (isContinued)
            AddICode(MakeShared<SlcSetUniformBoolFlagICode>(test.uniformFlag, test.flag));
        EnterCondition(isContinued ? test.flag : test.cond, test.uniformFlag);
        GenUnusedValue(node->GetStep());
        LeaveCondition();
    }
    EndLoop(test);
}

void SlcGenInterCode::GenUnusedValue(SlcExprNode* expr)
{
    m_valueUnused = dynamic_cast<SlcAssignExprNode*>(expr) != nullptr;
    expr->ApplyWalker(this);
    if (!TypeOf(expr)->IsVoidType())
        static_cast<void>(PopReference());
}

SlcGenInterCode::LoopTest SlcGenInterCode::BeginLoop(SlcLoopStmtNode* node,
                                                     SlcRelationNode* relation)
{
    LoopTest test;
    test.relation = relation;
    test.containsBreakOrContinue = node->ContainsBreakOrContinue() && !m_withoutGrid;
    test.flag = GetBoolFlag(SlcDetailNode::AVarying());
    test.start = GenLabel();
    test.end = GenLabel();
    GenAllActive(test.flag);
    if (!m_options.m_codeMotion)
        AddICode(test.start);
    GenerateLoopCondition(test);
    if (m_options.m_codeMotion)
        AddICode(test.start);
    return test;
}

void SlcGenInterCode::EndLoop(LoopTest& test)
{
    if (m_options.m_codeMotion)
        GenerateLoopCondition(test);
    AddICode(MakeShared<SlcGotoICode>(test.start));
    AddICode(test.end);
    if (test.uniformFlag)
        ReleaseBoolFlag(test.uniformFlag);
    ReleaseBoolFlag(test.cond);
    ReleaseBoolFlag(test.flag);
}

void SlcGenInterCode::GenAllActive(const SlcOperand& flag)
{
    if (const SlcOperand active = InnermostFlag())
        AddICode(MakeShared<SlcAssignSIMDICode>(flag, active));
    else
        AddInBlock(flag->GetDetail(), MakeShared<SlcAssignICode>(flag, SlcLexType::Bool(true)));
}

void SlcGenInterCode::GenerateLoopCondition(LoopTest& test)
{
    const bool outerCopy = std::exchange(m_flagCopyNeeded, test.containsBreakOrContinue);
    const SlcOperand upper = InnermostUniformFlag();
    // The guards of the body read the flag that the first test has made.
    const bool again = test.cond && !test.cond->IsUniform();
    EnterCondition(test.flag, upper);
    const SlcOperand cond = GenRelation(test.relation, again ? test.cond : nullptr, false);
    LeaveCondition();
    m_flagCopyNeeded = outerCopy;

    if (cond->IsUniform()) {
        GenSkipWithoutPoints(test.end);
        AddICode(MakeShared<SlcIfFalseGotoICode>(cond, test.end));
        test.cond = cond;
        return;
    }
    if (!again) {
        test.cond = cond;
        test.uniformFlag = GetBoolFlag(SlcDetailNode::AUniform());
    } else if (!(cond == test.cond)) {
        AddICode(MakeShared<SlcAssignSIMDICode>(test.cond, cond));
        ReleaseBoolFlag(cond);
    }
    AddICode(MakeShared<SlcAssignSIMDICode>(test.flag, test.cond));
    AddICode(MakeShared<SlcSetUniformBoolFlagICode>(test.uniformFlag, test.flag));
    AddICode(MakeShared<SlcIfFalseGotoICode>(test.uniformFlag, test.end));
}

/// `next` stands behind the body, unless it is null.
void SlcGenInterCode::GenUniformLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                         const SlcLabel& next)
{
    if (m_withoutGrid)
        m_loops.push_back({nullptr, nullptr, test.end, next, false});
    node->GetBody()->ApplyWalker(this);
    if (m_withoutGrid)
        m_loops.pop_back();
    if (next)
        AddICode(next);
}

/// True if a `continue` goes to `continueLabel`.
bool SlcGenInterCode::GenParallelLoopBody(SlcLoopStmtNode* node, const LoopTest& test,
                                          const SlcLabel& continueLabel)
{
    BeginParallelLoop(test.flag, test.cond, test.uniformFlag, test.end, continueLabel);
    InsideParallelCond();
    node->GetBody()->ApplyWalker(this);
    OutsideParallelCond();
    const bool isContinued = m_loops.back().isContinued;
    EndParallelLoop();
    return isContinued;
}

void SlcGenInterCode::Case(SlcBreakStmtNode* node)
{
    GenLineNumberInfo(node);
    if (m_withoutGrid) {
        AddICode(MakeShared<SlcGotoICode>(
            GetBreakLabel(static_cast<std::size_t>(node->GetLevel()->GetValue()))));
        return;
    }
    if (!IsInParallelIf()) {
        m_errors->Error(node, "Doesn't yet genearate i-code for 'break' inside uniform loops");
        return;
    }
    const auto levels = static_cast<std::size_t>(node->GetLevel()->GetValue());
    if (levels > m_loops.size())
        m_errors->FatalError(node, "Trying to 'break' out too much loops");
    const auto leave = MakeShared<SlcBreakICode>(GetBreakLabel(levels));
    AddLoopFlags(leave->m_flags, levels);
    GenLeave(leave, leave->m_flags, m_loops[m_loops.size() - levels].cond);
}

void SlcGenInterCode::Case(SlcContinueStmtNode* node)
{
    GenLineNumberInfo(node);
    if (m_withoutGrid) {
        AddICode(MakeShared<SlcGotoICode>(
            GetContinueLabel(static_cast<std::size_t>(node->GetLevel()->GetValue()))));
        return;
    }
    if (!IsInParallelIf()) {
        m_errors->Error(node, "Doesn't yet genearate i-code for 'continue' inside uniform loops");
        return;
    }
    const auto levels = static_cast<std::size_t>(node->GetLevel()->GetValue());
    if (levels > m_loops.size())
        m_errors->FatalError(node, "Trying to 'continue' out too much loops");
    const auto leave = MakeShared<SlcContinueICode>(GetContinueLabel(levels));
    AddLoopFlags(leave->m_flags, levels - 1);
    Loop& target = m_loops[m_loops.size() - levels];
    target.isContinued = true;
    GenLeave(leave, leave->m_flags, target.cond);
}

/// The flags of the `count` innermost loops, from the innermost out.
void SlcGenInterCode::AddLoopFlags(std::deque<SlcOperand>& flags, std::size_t count) const
{
    for (std::size_t i = 1; i <= count; ++i)
        flags.push_back(m_loops[m_loops.size() - i].flag);
}

/// The uniform flags are brought up to date, so that guards skip code once no point is left.
void SlcGenInterCode::GenLeave(const SlcPtr<SlcICode>& leave, std::deque<SlcOperand>& flags,
                               const SlcOperand& outermost)
{
    std::vector<SlcPtr<SlcICode>> updates;
    for (auto level = m_conditions.rbegin(); level != m_conditions.rend(); ++level) {
        flags.push_back(level->flag);
        updates.push_back(MakeShared<SlcSetUniformBoolFlagICode>(level->uniformFlag, level->flag));
        if (level->flag == outermost)
            break;
    }
    AddInBlock(SlcDetailNode::AVarying(), leave);
    for (const auto& update : updates)
        AddICode(update);
}
