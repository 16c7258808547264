// Measures the stack available for recursion. `Reserve` only raises the limit and does not allocate
// memory; `Left` measures from the address of the current frame.
//
// Tested by tests/frontend/DeepInputTest.cpp, whose sources are longer or nested deeper than
// allowed.

#include "support/QxStack.h"

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <limits>

namespace {

/// Returns the lowest usable address of the calling thread's stack; 0 if it is unknown.
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

// The stack of the main thread grows on demand, up to the soft limit at the time of the growth.
std::size_t QxStack::Reserve(std::size_t wanted)
{
    rlimit limit = {};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0)
        return 0;
    if (limit.rlim_cur >= wanted)  // also true if there is no limit
        return wanted;
    const rlim_t before = limit.rlim_cur;
    limit.rlim_cur = std::min<rlim_t>(wanted, limit.rlim_max);
    return ::setrlimit(RLIMIT_STACK, &limit) == 0 ? limit.rlim_cur : before;
}

bool QxStack::IsOfMainThread()
{
    return ::getpid() == ::gettid();
}

std::size_t QxStack::Left()
{
    // Cached, since the query reads a table of the process, which is too slow for each call.
    static thread_local const std::uintptr_t lowest = LowestAddress();
    const auto here = reinterpret_cast<std::uintptr_t>(__builtin_frame_address(0));
    if (lowest == 0)
        return std::numeric_limits<std::size_t>::max();
    return here > lowest ? here - lowest : 0;
}
