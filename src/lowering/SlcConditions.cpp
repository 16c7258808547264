// Blocks, flags and the levels of conditions.
//
// Each computation that is not in whole-grid form is in a block, which guards it only by the
// innermost level. That suffices because a varying flag made under a condition is false wherever
// that condition is false.
//
//     if (a) { x = y; if (b) z = x; }          a and b vary
// becomes
//     u = any a; {; if a; x = y; endif; }
//     f = b under a; f = false under not a; w = any f; {; if f; z = x; endif; }
//
// The uniform flags u and w guard uniform code, and whole-grid forms take a or f as their
// condition. Code that makes a flag under a condition must therefore clear it outside the condition
// (ClearOutsideCondition), and an inverted flag is limited by the enclosing flag
// (SlcInvertBoolFlagICode).
//
// Tested by tests/lowering/SlcConditionsTest.cpp and, with values, by tests/run.

#include "lowering/SlcConditions.h"

#include <algorithm>

#include "icode/SlcAssignICode.h"
#include "icode/SlcJumpICode.h"

void SlcConditions::Start()
{
    m_parallelCondDepth = 0;
    m_boolExprDepth = 0;
    m_freeVaryingFlags.clear();
    m_freeUniformFlags.clear();
}

/// Emits one guard per block, so that blocks can be moved and merged independently.
void SlcConditions::AddBeginBlock(const SlcDetailNode* detail)
{
    const bool uniform = detail->IsUniform();
    if (!uniform) {
        m_currentParallelLabel = m_list.GenLabel();
        m_list.AddICode(MakeShared<SlcBeginParallelICode>(m_currentParallelLabel));
    }
    if (m_conditions.empty())
        return;
    const Condition& innermost = m_conditions.back();
    m_blockEndLabels.push_back(m_list.GenLabel());
    const SlcOperand& flag = uniform ? innermost.uniformFlag : innermost.flag;
    // The level may have no flag for code of this detail. The label is pushed anyway, so that the
    // end of the block pops the label of its beginning.
    if (flag.Null())
        return;
    if (innermost.state == AssignIfValue::IfTrue)
        m_list.AddICode(MakeShared<SlcIfTrueICode>(flag, m_blockEndLabels.back()));
    else
        m_list.AddICode(MakeShared<SlcIfFalseICode>(flag, m_blockEndLabels.back()));
}

void SlcConditions::AddEndBlock(const SlcDetailNode* detail)
{
    const bool uniform = detail->IsUniform();
    if (!m_conditions.empty()) {
        const Condition& innermost = m_conditions.back();
        const SlcLabel label = m_blockEndLabels.back();
        m_blockEndLabels.pop_back();
        if (uniform ? innermost.uniformFlag : innermost.flag)
            m_list.AddICode(MakeShared<SlcEndIfICode>(label));
    }
    if (!uniform)
        m_list.AddICode(MakeShared<SlcEndParallelICode>(m_currentParallelLabel));
}

void SlcConditions::AddInBlock(const SlcDetailNode* detail, const SlcPtr<SlcICode>& code)
{
    AddBeginBlock(detail);
    m_list.AddICode(code);
    AddEndBlock(detail);
}

void SlcConditions::GenPlainAssignment(const SlcOperand& lhs, const SlcOperand& rhs)
{
    AddInBlock(UniformIfAll({lhs, rhs}), MakeShared<SlcAssignICode>(lhs, rhs));
}

SlcDetailNode* SlcConditions::UniformIfAll(const std::deque<SlcOperand>& operands)
{
    const bool uniform =
        std::all_of(operands.begin(), operands.end(),
                    [](const SlcOperand& operand) { return operand->IsUniform(); });
    return uniform ? SlcDetailNode::AUniform() : SlcDetailNode::AVarying();
}

SlcOperand SlcConditions::GetBoolFlag(SlcDetailNode* detail)
{
    auto& freeFlags =
        m_list.DetailHere(detail)->IsUniform() ? m_freeUniformFlags : m_freeVaryingFlags;
    if (!m_options.m_reuseBoolFlags || freeFlags.empty())
        return m_list.GenTempVar(SlcTypeNode::ABoolean(), detail);
    SlcOperand flag = freeFlags.back();
    freeFlags.pop_back();
    return flag;
}

void SlcConditions::ReleaseBoolFlag(const SlcOperand& flag)
{
    if (m_options.m_reuseBoolFlags)
        (flag->IsUniform() ? m_freeUniformFlags : m_freeVaryingFlags).push_back(flag);
}

SlcOperand SlcConditions::InnermostFlag() const
{
    if (!IsInParallelIf())
        return nullptr;
    // A level with a uniform flag, from a logical operator with a uniform left side, does not limit
    // the points.
    for (auto level = m_conditions.rbegin(); level != m_conditions.rend(); ++level)
        if (!level->flag->IsUniform())
            return level->flag;
    return nullptr;
}

SlcOperand SlcConditions::InnermostUniformFlag() const
{
    return IsInParallelIf() ? m_conditions.back().uniformFlag : nullptr;
}

void SlcConditions::GenSkipWithoutPoints(const SlcLabel& label)
{
    if (m_conditions.empty() || m_conditions.back().uniformFlag.Null())
        return;
    const Condition& innermost = m_conditions.back();
    if (innermost.state == AssignIfValue::IfTrue)
        m_list.AddICode(MakeShared<SlcIfFalseGotoICode>(innermost.uniformFlag, label));
    else
        m_list.AddICode(MakeShared<SlcIfTrueGotoICode>(innermost.uniformFlag, label));
}

void SlcConditions::BeginParallelIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    m_conditions.push_back({flag, AssignIfValue::IfTrue, uniformFlag});
}

void SlcConditions::BeginParallelIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    m_conditions.push_back({flag, AssignIfValue::IfFalse, uniformFlag});
}

void SlcConditions::BeginParallelIfNotCurrentCond()
{
    Condition opposite = m_conditions.back();
    opposite.state =
        opposite.state == AssignIfValue::IfTrue ? AssignIfValue::IfFalse : AssignIfValue::IfTrue;
    m_conditions.push_back(std::move(opposite));
}

void SlcConditions::BeginAssignIfTrue(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfTrue(flag, uniformFlag);
    ++m_boolExprDepth;
}

void SlcConditions::BeginAssignIfFalse(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfFalse(flag, uniformFlag);
    ++m_boolExprDepth;
}

void SlcConditions::EndAssignIfTrue()
{
    --m_boolExprDepth;
    EndParallelIfTrue();
}

void SlcConditions::EndAssignIfFalse()
{
    --m_boolExprDepth;
    EndParallelIfFalse();
}

void SlcConditions::EnterCondition(const SlcOperand& flag, const SlcOperand& uniformFlag)
{
    BeginParallelIfTrue(flag, uniformFlag);
    InsideParallelCond();
}

void SlcConditions::LeaveCondition()
{
    OutsideParallelCond();
    EndParallelIfTrue();
}

void SlcConditions::AssignOutsideCondition(const SlcOperand& flag, const SlcOperand& value)
{
    BeginParallelIfNotCurrentCond();
    AddInBlock(flag->GetDetail(), MakeShared<SlcAssignICode>(flag, value));
    EndParallelIfNotCurrentCond();
}

void SlcConditions::ClearOutsideCondition(const SlcOperand& flag)
{
    if (!IsInParallelIf() || flag->IsUniform())
        return;
    const SlcOperand& guard = m_conditions.back().flag;
    // Where a uniform guard excludes the right side of an operator, the left side has set the flag.
    // The caller clears it outside the enclosing level, once this one has ended.
    if (guard == flag || guard->IsUniform())
        return;
    AssignOutsideCondition(flag, SlcLexType::Bool(false));
}

void SlcConditions::GenAllActive(const SlcOperand& flag)
{
    if (const SlcOperand active = InnermostFlag())
        m_list.AddICode(MakeShared<SlcAssignSIMDICode>(flag, active));
    else
        AddInBlock(flag->GetDetail(), MakeShared<SlcAssignICode>(flag, SlcLexType::Bool(true)));
}

SlcOperand SlcConditions::SimdCondition() const
{
    if (!IsInParallelIf() || m_conditions.empty())
        return nullptr;
    const Condition& innermost = m_conditions.back();
    // There is no whole-grid form for points where a flag is false, nor for a uniform flag.
    const bool limits =
        innermost.flag && innermost.state == AssignIfValue::IfTrue && !innermost.flag->IsUniform();
    return limits ? innermost.flag : nullptr;
}

SlcGridForm SlcConditions::GridForm() const
{
    if (!IsInParallelIf())
        return SlcGridForm::Whole();
    const SlcOperand condition = SimdCondition();
    return condition ? SlcGridForm::At(condition) : SlcGridForm::Plain();
}

SlcGridForm SlcConditions::FormFor(const SlcDetailNode* detail) const
{
    return detail->IsUniform() ? SlcGridForm::Plain() : SlcGridForm::At(SimdCondition());
}

void SlcConditions::AddInForm(const SlcGridForm& form, const SlcPtr<SlcICode>& code)
{
    if (form.simd)
        m_list.AddICode(code);
    else
        AddInBlock(SlcDetailNode::AVarying(), code);
}
