#include "host/QxVersion.h"

#include <atomic>

unsigned long QxNextVersion()
{
    static std::atomic<unsigned long> last{0};
    return ++last;
}
