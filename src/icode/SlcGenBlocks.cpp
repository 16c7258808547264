// Blocks, flags and the levels of conditions.
//
// Every instruction that is not a form for the whole grid stands in a block, which guards it by
// the innermost level alone. That is enough because a varying flag made under a condition is
// false wherever that condition is.

#include "icode/SlcGenInterCode.h"
#include "support/reports/SlcSemanticError.h"

/// Opens a guard of its own for each block, so that blocks can be moved and merged one by one.
void SlcGenInterCode::AddBeginBlock(const SlcDetailNode* detail)
{
    const bool uniform = detail->IsUniform();
    if (!uniform) {
        m_currentParallelLabel = GenLabel();
        AddICode(MakeShared<SlcBeginParallelICode>(m_currentParallelLabel));
    }
    if (m_conditions.empty())
        return;
    const Condition& innermost = m_conditions.back();
    m_blockEndLabels.push_back(GenLabel());
    const SlcOperand& flag = uniform ? innermost.uniformFlag : innermost.flag;
    if (flag.Null())
        return;
    if (innermost.state == AssignIfValue::IfTrue)
        AddICode(MakeShared<SlcIfTrueICode>(flag, m_blockEndLabels.back()));
    else
        AddICode(MakeShared<SlcIfFalseICode>(flag, m_blockEndLabels.back()));
}

void SlcGenInterCode::AddEndBlock(const SlcDetailNode* detail)
{
    const bool uniform = detail->IsUniform();
    if (!m_conditions.empty()) {
        const Condition& innermost = m_conditions.back();
        const SlcLabel label = m_blockEndLabels.back();
        m_blockEndLabels.pop_back();
        if (uniform ? innermost.uniformFlag : innermost.flag)
            AddICode(MakeShared<SlcEndIfICode>(label));
    }
    if (!uniform)
        AddICode(MakeShared<SlcEndParallelICode>(m_currentParallelLabel));
}

void SlcGenInterCode::AddInBlock(const SlcDetailNode* detail, SlcPtr<SlcICode> code)
{
    AddBeginBlock(detail);
    AddICode(std::move(code));
    AddEndBlock(detail);
}

SlcOperand SlcGenInterCode::GetBoolFlag(SlcDetailNode* detail)
{
    auto& freeFlags = DetailHere(detail)->IsUniform() ? m_freeUniformFlags : m_freeVaryingFlags;
    if (!m_options.m_reuseBoolFlags || freeFlags.empty())
        return GenTempVar(SlcTypeNode::ABoolean(), detail);
    SlcOperand flag = freeFlags.back();
    freeFlags.pop_back();
    return flag;
}

void SlcGenInterCode::ReleaseBoolFlag(const SlcOperand& flag)
{
    if (m_options.m_reuseBoolFlags)
        (flag->IsUniform() ? m_freeUniformFlags : m_freeVaryingFlags).push_back(flag);
}

SlcLabel SlcGenInterCode::GetBreakLabel(std::size_t level) const
{
    return m_loops[m_loops.size() - level].breakLabel;
}

SlcLabel SlcGenInterCode::GetContinueLabel(std::size_t level) const
{
    return m_loops[m_loops.size() - level].continueLabel;
}

SlcOperand SlcGenInterCode::InnermostFlag() const
{
    if (!IsInParallelIf())
        return nullptr;
    for (auto level = m_conditions.rbegin(); level != m_conditions.rend(); ++level)
        if (!level->flag->IsUniform())
            return level->flag;
    return nullptr;
}

SlcOperand SlcGenInterCode::InnermostUniformFlag() const
{
    return IsInParallelIf() ? m_conditions.back().uniformFlag : nullptr;
}

void SlcGenInterCode::GenSkipWithoutPoints(const SlcLabel& label)
{
    if (m_conditions.empty() || m_conditions.back().uniformFlag.Null())
        return;
    const Condition& innermost = m_conditions.back();
    if (innermost.state == AssignIfValue::IfTrue)
        AddICode(MakeShared<SlcIfFalseGotoICode>(innermost.uniformFlag, label));
    else
        AddICode(MakeShared<SlcIfTrueGotoICode>(innermost.uniformFlag, label));
}

void SlcGenInterCode::BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    m_conditions.push_back({flag, AssignIfValue::IfTrue, uniformFlag});
}

void SlcGenInterCode::BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    m_conditions.push_back({flag, AssignIfValue::IfFalse, uniformFlag});
}

void SlcGenInterCode::BeginParallelIfNotCurrentCond()
{
    Condition opposite = m_conditions.back();
    opposite.state =
        opposite.state == AssignIfValue::IfTrue ? AssignIfValue::IfFalse : AssignIfValue::IfTrue;
    m_conditions.push_back(std::move(opposite));
}

void SlcGenInterCode::BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfTrue(flag, uniformFlag);
    ++m_boolExprDepth;
}

void SlcGenInterCode::BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfFalse(flag, uniformFlag);
    ++m_boolExprDepth;
}

void SlcGenInterCode::EndAssignIfTrue()
{
    --m_boolExprDepth;
    EndParallelIfTrue();
}

void SlcGenInterCode::EndAssignIfFalse()
{
    --m_boolExprDepth;
    EndParallelIfFalse();
}

void SlcGenInterCode::EnterCondition(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfTrue(flag, uniformFlag);
    InsideParallelCond();
}

void SlcGenInterCode::LeaveCondition()
{
    OutsideParallelCond();
    EndParallelIfTrue();
}

void SlcGenInterCode::BeginParallelLoop(const SlcOperand& flag, const SlcOperand& cond,
                                        const SlcOperand& uniformFlag, const SlcLabel& breakLabel,
                                        const SlcLabel& continueLabel)
{
    m_loops.push_back({flag, cond, breakLabel, continueLabel, false});
    BeginParallelIfTrue(cond, uniformFlag);
}

void SlcGenInterCode::EndParallelLoop()
{
    EndParallelIfTrue();
    m_loops.pop_back();
}

void SlcGenInterCode::AssignOutsideCondition(const SlcOperand& flag, const SlcOperand& value)
{
    BeginParallelIfNotCurrentCond();
    AddInBlock(flag->GetDetail(), MakeShared<SlcAssignICode>(flag, value));
    EndParallelIfNotCurrentCond();
}

void SlcGenInterCode::ClearOutsideCondition(const SlcOperand& flag)
{
    if (!IsInParallelIf() || flag->IsUniform())
        return;
    const SlcOperand& guard = m_conditions.back().flag;
    // Beside a uniform flag the value is known already; the level around it clears the rest.
    if (guard == flag || guard->IsUniform())
        return;
    AssignOutsideCondition(flag, SlcLexType::Bool(false));
}
