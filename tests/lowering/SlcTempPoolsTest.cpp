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
    /// Acquires all free varying floats and returns their names in the order of acquisition.
    std::string TakeAll()
    {
        std::string names;
        while (const SlcOperand taken = Acquire())
            names += taken->GetName();
        return names;
    }
    SlcOperand Acquire()
    {
        return m_pools.Acquire(SlcTypeNode::AFloat(), SlcDetailNode::AVarying());
    }

    SlcTempPools m_pools;
    SlcOperand m_a = Temporary("a");
    SlcOperand m_b = Temporary("b");
    SlcOperand m_c = Temporary("c");
};

TEST_F(PoolsTest, DoNotReleaseTheTemporariesOfTheCaller)
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

TEST_F(PoolsTest, AreRestoredAfterABody)
{
    for (const SlcOperand& temporary : {m_a, m_b, m_c})
        m_pools.AddUsed(temporary);
    m_pools.ReleaseUsed();
    m_pools.EnterBody();
    EXPECT_EQ(Acquire(), m_c);
    EXPECT_EQ(Acquire(), m_b);
    m_pools.ReleaseUsed();
    EXPECT_EQ(Acquire(), m_b);
    m_pools.LeaveBody(nullptr);
    EXPECT_EQ(TakeAll(), "cba");
}

TEST_F(PoolsTest, KeepTheResultOfABodyInUse)
{
    for (const SlcOperand& temporary : {m_a, m_b, m_c})
        m_pools.AddUsed(temporary);
    m_pools.ReleaseUsed();
    m_pools.EnterBody();  // the outer body must record the temporary that the inner one keeps
    m_pools.EnterBody();
    EXPECT_EQ(Acquire(), m_c);
    const SlcOperand inner = Acquire();
    m_pools.LeaveBody(inner);
    EXPECT_EQ(TakeAll(), "ca");
    m_pools.LeaveBody(nullptr);
    EXPECT_EQ(TakeAll(), "cba");
}

}  // namespace
