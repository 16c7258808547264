// All memory of the program comes from an arena: a compile makes a hundred small objects for a line
// of source and then ends, and a quarter of its work was malloc and free. The program has one
// thread. Builds with sanitizers leave this out, since they watch the system's memory.

#include <cstddef>
#include <new>

#include "support/SlcArena.h"

namespace {

// Made before anything else and never destroyed, since static objects are both made and freed in
// it.
union Undestroyed {
    constexpr Undestroyed() : arena() {}
    ~Undestroyed() {}

    SlcArena arena;
};
constinit Undestroyed g_memory;

}  // namespace

void* operator new(std::size_t size)
{
    return g_memory.arena.Take(size);
}

void operator delete(void* room) noexcept
{
    g_memory.arena.GiveBack(room);
}

void operator delete(void* room, std::size_t) noexcept
{
    g_memory.arena.GiveBack(room);
}
