// The stack of the first thread grows on demand, up to the soft limit at the time of the growth.

#include "support/SlcStackSpace.h"

#include <sys/resource.h>

#include <algorithm>

std::size_t SlcReserveStack(std::size_t wanted)
{
    rlimit limit = {};
    if (::getrlimit(RLIMIT_STACK, &limit) != 0)
        return 0;
    if (limit.rlim_cur >= wanted)  // holds for no limit too
        return wanted;
    const rlim_t before = limit.rlim_cur;
    limit.rlim_cur = std::min<rlim_t>(wanted, limit.rlim_max);
    return ::setrlimit(RLIMIT_STACK, &limit) == 0 ? limit.rlim_cur : before;
}
