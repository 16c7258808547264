#include "lowering/SlcTempPools.h"

#include <gtest/gtest.h>

namespace {

SlcOperand Temporary(const char* name)
{
    return MakeShared<SlcLexType>(SlcLexicalNode::CreateIdent(name), SlcTypeNode::AFloat(),
                                  SlcDetailNode::AVarying(), SlcStorageSpecNode::ALocal());
}

class PoolsTest : public testing::Test {
protected:
    /// Names of the free ones, in the order in which they are taken; leaves them in use.
    std::string TakeAll()
    {
        std::string names;
        while (const SlcOperand taken = Take())
            names += taken->GetName();
        return names;
    }
    SlcOperand Take() { return m_pools.Take(SlcTypeNode::AFloat(), SlcDetailNode::AVarying()); }

    SlcTempPools m_pools;
    SlcOperand m_a = Temporary("a");
    SlcOperand m_b = Temporary("b");
    SlcOperand m_c = Temporary("c");
};

TEST_F(PoolsTest, KeepABodyFromReleasingWhatItsCallerUses)
{
    m_pools.AddUsed(m_a);
    m_pools.EnterBody();
    m_pools.AddUsed(m_b);
    m_pools.ReleaseUsed();
    EXPECT_EQ(TakeAll(), "b");
    m_pools.LeaveBody(nullptr);
    EXPECT_EQ(TakeAll(), "");
    m_pools.ReleaseUsed();
    EXPECT_EQ(TakeAll(), "a");
}

TEST_F(PoolsTest, AreBehindABodyAsInFrontOfIt)
{
    for (const SlcOperand& temporary : {m_a, m_b, m_c})
        m_pools.AddUsed(temporary);
    m_pools.ReleaseUsed();
    m_pools.EnterBody();
    EXPECT_EQ(Take(), m_c);
    EXPECT_EQ(Take(), m_b);
    m_pools.ReleaseUsed();
    EXPECT_EQ(Take(), m_b);
    m_pools.LeaveBody(nullptr);
    EXPECT_EQ(TakeAll(), "cba");
}

TEST_F(PoolsTest, KeepTheResultOfABodyInUse)
{
    for (const SlcOperand& temporary : {m_a, m_b, m_c})
        m_pools.AddUsed(temporary);
    m_pools.ReleaseUsed();
    m_pools.EnterBody();  // the outer body learns what the inner one has kept
    m_pools.EnterBody();
    EXPECT_EQ(Take(), m_c);
    const SlcOperand inner = Take();
    m_pools.LeaveBody(inner);
    EXPECT_EQ(TakeAll(), "ca");
    m_pools.LeaveBody(nullptr);
    EXPECT_EQ(TakeAll(), "cba");
}

}  // namespace
