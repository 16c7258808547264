// Blocks are cut from a chunk one after another. A block's header precedes its aligned address, in
// the last bytes of the preceding unit, so that a small object takes as much space as with malloc:
//
//     | .. header | object ............ header | object .. header | ...
//                 ^ aligned                    ^ aligned
//
// When a new chunk begins, the rest of the old one is lost; it is smaller than the largest block.
//
// Tested by tests/support/SlcArenaTest.cpp.

#include "support/SlcArena.h"

#include <cstdlib>
#include <new>

namespace {

[[nodiscard]] char* FromSystem(std::size_t size)
{
    if (void* const room = std::malloc(size))
        return static_cast<char*>(room);
    throw std::bad_alloc();
}

}  // namespace

SlcArena::~SlcArena()
{
    while (Chunk* const last = m_chunks) {
        m_chunks = last->before;
        std::free(last);
    }
}

void SlcArena::BeginChunk()
{
    char* const chunk = FromSystem(k_chunk);
    m_chunks = new (chunk) Chunk{m_chunks};
    m_next = chunk + k_unit;
    m_left = k_chunk / k_unit - 1;
}

void* SlcArena::TakeLarge(std::size_t size)
{
    if (size > static_cast<std::size_t>(-1) - k_unit)
        throw std::bad_alloc();
    void* const room = FromSystem(size + k_unit) + k_unit;
    HeaderOf(room).units = 0;
    return room;
}

void SlcArena::GiveBackLarge(void* room)
{
    std::free(static_cast<char*>(room) - k_unit);
}
