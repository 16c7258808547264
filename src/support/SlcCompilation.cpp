// Parts are destroyed in reverse order, since a part may refer to earlier ones.
//
// Tested by tests/compiler.

#include "support/SlcCompilation.h"

#include <atomic>
#include <utility>

namespace {

thread_local SlcCompilation* t_entered = nullptr;

}  // namespace

SlcCompilation::~SlcCompilation()
{
    for (auto number = m_order.rbegin(); number != m_order.rend(); ++number)
        m_parts[*number].reset();
}

SlcCompilation& SlcCompilation::Current()
{
    if (t_entered)
        return *t_entered;
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

std::size_t SlcCompilation::NewNumber()
{
    static std::atomic<std::size_t> next = 0;
    return next++;
}

void SlcCompilation::Put(std::size_t number, std::unique_ptr<AnyHolder> part)
{
    if (number >= m_parts.size())
        m_parts.resize(number + 1);
    m_parts[number] = std::move(part);
    m_order.push_back(number);
}
