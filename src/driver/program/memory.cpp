// All memory of the program comes from an arena: a compile makes a hundred small objects for a line
// of source and then ends, and a quarter of its work was malloc and free. The program has one
// thread. Builds with sanitizers leave this out, since they watch the system's memory.

#include <cstddef>
#include <new>

#include "support/SlcArena.h"

namespace {

// Made before anything else and never destroyed: static objects are both made and freed in it.
constinit SlcArena g_arena;

}  // namespace

void* operator new(std::size_t size)
{
    return g_arena.Take(size);
}

void operator delete(void* room) noexcept
{
    g_arena.GiveBack(room);
}

void operator delete(void* room, std::size_t) noexcept
{
    g_arena.GiveBack(room);
}
