// All memory that `new` allocates comes from an arena: a compile makes a hundred small objects per
// line of source and then ends, and malloc and free took a quarter of its time. The program has one
// thread. Builds with sanitizers omit this file, since sanitizers watch the system's memory.

#include <cstddef>
#include <new>

#include "support/SlcArena.h"

namespace {

// Constructed before all other objects and never destroyed, since static objects allocate and free
// memory in the arena.
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
