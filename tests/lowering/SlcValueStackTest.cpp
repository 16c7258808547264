#include "lowering/SlcValueStack.h"

#include <gtest/gtest.h>

#include "icode/SlcArrayICode.h"
#include "lowering/LoweringParts.h"

namespace {

class ValueStackTest : public testing::Test {
protected:
    LoweringParts m_parts;
    SlcValueStack& m_values = m_parts.context.m_values;
    SlcOperand m_x = LoweringParts::Variable("x_1");
    SlcOperand m_y = LoweringParts::Variable("y_1");
};

TEST_F(ValueStackTest, PopsACopyOfAValueThatWasOverwritten)
{
    m_parts.Assign(m_x, 1);
    m_values.Push(m_x);
    m_parts.Assign(m_y, 2);
    m_parts.Assign(m_x, 3);
    EXPECT_FALSE(m_values.Pop() == m_x);
    EXPECT_EQ(m_parts.Text(), "{ x_1 = 1; } { t0 = x_1; } { y_1 = 2; } { x_1 = 3; }");
}

TEST_F(ValueStackTest, PopsOtherValuesUnchanged)
{
    const SlcOperand temporary = LoweringParts::Variable("T7_");
    for (const SlcOperand& value : {m_x, temporary})
        m_values.Push(value);
    m_parts.Assign(m_y, 1);
    m_parts.Assign(temporary,
                   2);  // not noticed, since the lowering never assigns a temporary on the stack
    EXPECT_EQ(m_values.Pop(), temporary);
    EXPECT_EQ(m_values.Pop(), m_x);

    m_values.Push(m_x);
    m_parts.Assign(m_x, 3);
    EXPECT_EQ(m_values.PopReference(), m_x);
    EXPECT_EQ(m_parts.Text(), "{ y_1 = 1; } { t0 = 2; } { x_1 = 3; }");
}

TEST_F(ValueStackTest, CopiesEachValueWhereItWasPushed)
{
    m_values.Push(m_x);
    m_parts.Assign(m_x, 1);
    m_values.Push(m_x);
    m_values.Push(m_y);
    m_parts.Assign(m_x, 2);
    m_parts.Assign(m_y, 3);
    for (int i = 0; i < 3; ++i)
        static_cast<void>(m_values.Pop());
    EXPECT_EQ(m_parts.Text(),
              "{ t0 = x_1; } { x_1 = 1; } { t1 = y_1; } { t2 = x_1; } { x_1 = 2; } { y_1 = 3; }");
}

TEST_F(ValueStackTest, CopiesAnElementWhoseArrayIsWrittenThroughAnotherReference)
{
    const SlcOperand array =
        LoweringParts::Variable("w_1", SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat(), 2));
    SlcElements& elements = m_parts.context.m_elements;
    const auto element = [&](double index) {
        return elements.GenElementRef(array, SlcLexType::Float(index), SlcDetailNode::AVarying());
    };
    m_values.Push(element(0));
    EXPECT_EQ(m_values.VariableOf(m_values.Last()), array);
    m_parts.Assign(element(1), 5);
    static_cast<void>(m_values.Pop());
    EXPECT_EQ(m_parts.Text(), "t0 = &w_1[0]; { t1 = t0; } t2 = &w_1[1]; { t2 = 5; }");
}

}  // namespace
