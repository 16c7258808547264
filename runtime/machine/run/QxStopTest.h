#pragma once

#include <memory>
#include <utility>

/// Whether a run is to stop, any function that takes nothing and returns bool. Copies share the
/// function. It stands here since <functional> is a fifth of what a host would read.
class QxStopTest {
public:
    QxStopTest() = default;
    template <class Test>
    QxStopTest(Test test)
        : m_test(std::make_shared<Test>(std::move(test))),
          m_call([](void* held) -> bool { return (*static_cast<Test*>(held))(); })
    {
    }

    /// There is a function.
    explicit operator bool() const { return m_call != nullptr; }
    [[nodiscard]] bool operator()() const { return m_call(m_test.get()); }

private:
    std::shared_ptr<void> m_test;
    bool (*m_call)(void*) = nullptr;
};
