#include "support/QxStack.h"

#include <pthread.h>

#include <cstdint>
#include <limits>

namespace {

/// The lowest usable address; 0 where it is unknown.
std::uintptr_t LowestAddress()
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* lowest = nullptr;
    std::size_t size = 0;
    const bool known = pthread_attr_getstack(&attributes, &lowest, &size) == 0;
    pthread_attr_destroy(&attributes);
    return known ? reinterpret_cast<std::uintptr_t>(lowest) : 0;
}

}  // namespace

std::size_t QxStack::Left()
{
    // Asking for it reads a table of the process, which is too slow for each call.
    static thread_local const std::uintptr_t lowest = LowestAddress();
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (lowest == 0)
        return std::numeric_limits<std::size_t>::max();
    return here > lowest ? here - lowest : 0;
}
