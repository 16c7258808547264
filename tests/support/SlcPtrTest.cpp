#include "support/SlcPtr.h"

#include <gtest/gtest.h>

namespace {

class Counted : public SlcCollectable {
public:
    explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
    ~Counted() override { --m_alive; }

private:
    int& m_alive;
};

class Derived : public Counted {
public:
    using Counted::Counted;
};

class Other : public SlcCollectable {};

class Holder : public SlcCollectable {
public:
    SlcPtr<Holder> m_next;
};

}  // namespace

TEST(SlcPtr, DeletesTheObjectWithItsLastHolder)
{
    int alive = 0;
    SlcPtr<Counted> first = MakeShared<Derived>(alive);
    {
        const SlcPtr<Counted> second = first;
        first = nullptr;
        EXPECT_EQ(alive, 1);
        EXPECT_TRUE(first.Null());
    }
    EXPECT_EQ(alive, 0);
}

TEST(SlcPtr, KeepsItsObjectWhenAssignedTheSameOne)
{
    int alive = 0;
    SlcPtr<Counted> pointer = MakeShared<Counted>(alive);
    SlcPtr<Counted>& itself = pointer;
    pointer = itself;
    const SlcPtr<Counted> other = pointer;
    pointer = other;
    EXPECT_EQ(alive, 1);
    pointer = nullptr;
    EXPECT_EQ(alive, 1) << "the count went down too far";
}

TEST(SlcPtr, ReleasesTheOldObjectAfterTakingTheNewOne)
{
    // Only the old object holds the new one.
    SlcPtr<Holder> pointer = MakeShared<Holder>();
    pointer->m_next = MakeShared<Holder>();
    pointer = pointer->m_next;
    EXPECT_TRUE(pointer->m_next.Null());
}

TEST(SlcPtr, ComparesObjectsAcrossTheClassesOfOneFamily)
{
    int alive = 0;
    const SlcPtr<Derived> derived = MakeShared<Derived>(alive);
    const SlcPtr<Counted> base = derived;
    EXPECT_TRUE(base == derived);
    EXPECT_TRUE(base != SlcPtr<Counted>(MakeShared<Counted>(alive)));
}

TEST(CheckCast, ReturnsNullForNullAndThrowsForAnotherClass)
{
    int alive = 0;
    const SlcPtr<SlcCollectable> object = MakeShared<Derived>(alive);
    EXPECT_FALSE(CheckCast<Derived>(object).Null());
    EXPECT_TRUE(CheckCast<Derived>(SlcPtr<SlcCollectable>()).Null());
    EXPECT_THROW(static_cast<void>(CheckCast<Other>(object)), std::bad_cast);
}
