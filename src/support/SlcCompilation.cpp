// Parts are destroyed in reverse order of creation, since a part may refer to earlier ones.
//
// Tested by tests/compiler.

#include "support/SlcCompilation.h"

#include <utility>

constinit thread_local SlcCompilation* SlcCompilation::t_entered = nullptr;

SlcCompilation::~SlcCompilation()
{
    for (auto number = m_order.rbegin(); number != m_order.rend(); ++number)
        m_parts[*number].reset();
}

SlcCompilation& SlcCompilation::OwnOfThread()
{
    thread_local SlcCompilation ownOfThread;
    t_entered = &ownOfThread;
    return ownOfThread;
}

SlcCompilation::Entered::Entered(SlcCompilation& compilation)
    : m_before(std::exchange(t_entered, &compilation))
{
}

SlcCompilation::Entered::~Entered()
{
    t_entered = m_before;
}

std::size_t SlcCompilation::NumberOf(std::atomic<std::size_t>& number)
{
    static std::atomic<std::size_t> last = 0;
    std::size_t own = number.load();
    // If two threads assign a number at the same time, the second uses the number of the first.
    if (own == 0) {
        const std::size_t wanted = ++last;
        own = number.compare_exchange_strong(own, wanted) ? wanted : own;
    }
    return own;
}

SlcCompilation::AnyHolder& SlcCompilation::Make(std::atomic<std::size_t>& number,
                                                std::unique_ptr<AnyHolder> (*make)())
{
    const std::size_t own = NumberOf(number);
    // Parts that this one requests in its constructor are made, and so recorded, before it.
    std::unique_ptr<AnyHolder> part = make();
    if (own >= m_parts.size())
        m_parts.resize(own + 1);
    m_parts[own] = std::move(part);
    m_order.push_back(own);
    return *m_parts[own];
}
