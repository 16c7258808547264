// Rooms are cut from a chunk one behind the other. The header stands in front of the aligned
// address, in the last bytes of the unit before, so that a small object costs as much as it does in
// malloc:
//
//     | .. header | object ............ header | object .. header | ...
//                 ^ aligned                    ^ aligned
//
// Before a new chunk, what is left of the old one is dropped: less than a room of the largest size.
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
