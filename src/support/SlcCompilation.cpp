// Parts are destroyed in reverse order, since a part may refer to earlier ones.
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
    // Of two threads that ask for a new one at a time the second takes that of the first.
    if (own == 0) {
        const std::size_t wanted = ++last;
        own = number.compare_exchange_strong(own, wanted) ? wanted : own;
    }
    return own;
}

void SlcCompilation::Put(std::size_t number, std::unique_ptr<AnyHolder> part)
{
    if (number >= m_parts.size())
        m_parts.resize(number + 1);
    m_parts[number] = std::move(part);
    m_order.push_back(number);
}
