#include "lowering/SlcConditions.h"

#include <gtest/gtest.h>

#include "lowering/LoweringParts.h"

namespace {

class ConditionsTest : public testing::Test {
protected:
    static SlcOperand Flag(const char* name, SlcDetailNode* detail)
    {
        return LoweringParts::Variable(name, SlcTypeNode::ABoolean(), detail);
    }

    LoweringParts m_parts;
    SlcConditions& m_conditions = m_parts.context.m_conditions;
    SlcOperand m_flag = Flag("F_1", SlcDetailNode::AVarying());
    SlcOperand m_uniform = Flag("U_1", SlcDetailNode::AUniform());
    SlcOperand m_x = LoweringParts::Variable("x_1");
    SlcOperand m_k =
        LoweringParts::Variable("k_1", SlcTypeNode::AFloat(), SlcDetailNode::AUniform());
};

TEST_F(ConditionsTest, GuardEachBlockByTheInnermostFlagOfItsDetail)
{
    m_conditions.EnterCondition(Flag("G_1", SlcDetailNode::AVarying()), nullptr);
    m_conditions.EnterCondition(m_flag, m_uniform);
    m_parts.Assign(m_x, 1);
    m_parts.Assign(m_k, 2);
    m_conditions.BeginParallelIfNotCurrentCond();
    m_parts.Assign(m_x, 3);
    m_conditions.EndParallelIfNotCurrentCond();
    m_conditions.LeaveCondition();
    m_parts.Assign(m_k, 4);  // the level has no uniform flag
    m_conditions.LeaveCondition();
    m_parts.Assign(m_x, 5);
    EXPECT_EQ(m_parts.Text(),
              "{ F_1?( x_1 = 1; ) } U_1?( k_1 = 2; ) { !F_1?( x_1 = 3; ) } k_1 = 4; { x_1 = 5; }");
}

TEST_F(ConditionsTest, LimitGridFormsOnlyWhereAFlagCan)
{
    EXPECT_EQ(m_conditions.GridForm(), SlcGridForm::Whole());
    m_conditions.EnterCondition(m_flag, m_uniform);
    EXPECT_EQ(m_conditions.GridForm(), SlcGridForm::At(m_flag));
    m_conditions.BeginParallelIfNotCurrentCond();
    EXPECT_EQ(m_conditions.GridForm(), SlcGridForm::Plain());  // the flag is false where code runs
    m_conditions.EndParallelIfNotCurrentCond();
    m_conditions.BeginAssignIfTrue(m_uniform, m_uniform);
    EXPECT_EQ(m_conditions.GridForm(), SlcGridForm::Plain());  // the flag is uniform
    m_conditions.EndAssignIfTrue();
    m_conditions.LeaveCondition();
}

TEST_F(ConditionsTest, ClearAFlagOutsideItsCondition)
{
    const SlcOperand inner = Flag("H_1", SlcDetailNode::AVarying());
    m_conditions.ClearOutsideCondition(inner);  // has no effect outside of conditions
    m_conditions.EnterCondition(m_flag, m_uniform);
    m_conditions.ClearOutsideCondition(m_flag);
    m_conditions.ClearOutsideCondition(inner);
    m_conditions.LeaveCondition();
    EXPECT_EQ(m_parts.Text(), "{ !F_1?( H_1 = false; ) }");
}

TEST(SlcConditions, RecycleFlagsByTheirDetail)
{
    LoweringParts parts(PlainOptionsWith(&SlcOptionsControl::m_reuseBoolFlags));
    SlcConditions& conditions = parts.context.m_conditions;
    const SlcOperand varying = conditions.GetBoolFlag(SlcDetailNode::AVarying());
    conditions.ReleaseBoolFlag(varying);
    const SlcOperand uniform = conditions.GetBoolFlag(SlcDetailNode::AUniform());
    EXPECT_TRUE(uniform->IsUniform());
    EXPECT_EQ(conditions.GetBoolFlag(SlcDetailNode::AVarying()), varying);
    EXPECT_FALSE(conditions.GetBoolFlag(SlcDetailNode::AVarying()) == varying);
}

}  // namespace
