#pragma once

#include <memory>
#include <utility>

/// A test whether a run should stop: any function without parameters that returns bool. Copies
/// share the function. This replaces std::function, since <functional> would be a fifth of the text
/// that a host compiles.
class QxStopTest {
public:
    QxStopTest() = default;
    template <class Test>
    QxStopTest(Test test)
        : m_test(std::make_shared<Test>(std::move(test))),
          m_call([](void* held) -> bool { return (*static_cast<Test*>(held))(); })
    {
    }

    /// True if there is a function.
    explicit operator bool() const { return m_call != nullptr; }
    [[nodiscard]] bool operator()() const { return m_call(m_test.get()); }

private:
    std::shared_ptr<void> m_test;
    bool (*m_call)(void*) = nullptr;
};
