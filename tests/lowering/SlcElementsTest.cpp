#include "lowering/SlcElements.h"

#include <gtest/gtest.h>

#include "lowering/LoweringParts.h"

namespace {

class ElementsTest : public testing::Test {
protected:
    SlcOperand ReadCopy(const SlcOperand& index)
    {
        const SlcOperand copy = LoweringParts::Variable("T7_");
        m_elements.GenElementRead(copy, m_array, index);
        m_elements.RememberCopy(copy, m_array, index);
        return copy;
    }

    LoweringParts m_parts;
    SlcElements& m_elements = m_parts.context.m_elements;
    SlcOperand m_array =
        LoweringParts::Variable("w_1", SlcTypeNode::CreateArrayType(SlcTypeNode::AFloat(), 2));
    SlcOperand m_i = LoweringParts::Variable("i_1");
};

TEST_F(ElementsTest, WriteACopyBackByTheIndexOfItsRead)
{
    const SlcOperand copy = ReadCopy(m_i);
    m_parts.Assign(m_i, 1);
    m_elements.WriteBackElement(copy);
    EXPECT_EQ(
        m_parts.Text(),
        "{ t0 = &w_1[i_1]; t1 = t0; } { t2 = i_1; } { i_1 = 1; } { t3 = &w_1[t2]; t3 = t1; }");
}

TEST_F(ElementsTest, WriteBackOnlyRememberedCopies)
{
    const SlcOperand copy = ReadCopy(m_i);
    m_elements.WriteBackElement(m_i);
    m_elements.ForgetCopies(0);
    m_elements.WriteBackElement(copy);
    EXPECT_EQ(m_parts.Text(), "{ t0 = &w_1[i_1]; t1 = t0; }");
}

/// An element that was read directly into the target of an assignment is not a copy to write back.
TEST(SlcElements, DoNotWriteBackTheTargetOfAnAssignment)
{
    static const LowerCase cases[] = {
        {"float f(output float p) { p = 1; return 0; } uniform float a[2] = {0, 0}; "
         "float x; x = (o = a[w]) + f(o);",
         "t0 = &a_1[1]; t0 = 0; t1 = &a_1[0]; t1 = 0; { t2 = &a_1[w]; o = t2; } { t3 = o; } { o = "
         "1; } { x_1 = t3 + 0; }"},
    };
    ExpectCode(cases, PlainOptionsWith(&SlcOptionsControl::m_assignInPlace));
}

}  // namespace
