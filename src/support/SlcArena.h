#pragma once

#include <array>
#include <cstddef>
#include <new>

/// Memory for the many small objects of one compile: nodes, instructions, operands, entries, and
/// what containers of them hold. It comes in large chunks that last as long as the arena. What is
/// given back waits in a list for the next object of its size, so that either way costs a few
/// instructions and a long compile needs no more memory than the objects that it has at a time.
///
///     chunk:  [before][header|room][header|room]...        free[units]: room -> room -> null
///
/// Whoever owns an object still says when it goes, through `SlcPtr` and the containers; here only
/// its place is kept. One thread uses an arena.
class SlcArena {
public:
    SlcArena() = default;
    SlcArena(const SlcArena&) = delete;
    SlcArena& operator=(const SlcArena&) = delete;
    /// Frees the chunks, but no object that was too large for them.
    ~SlcArena();

    /// Room aligned for any object. Throws `std::bad_alloc`.
    [[nodiscard]] void* Take(std::size_t size)
    {
        const std::size_t units = (size + sizeof(Header) + k_unit - 1) / k_unit;
        if (units >= m_free.size())
            return TakeLarge(size);
        if (Free* const free = m_free[units]) {
            m_free[units] = free->next;
            return free;
        }
        if (m_left < units)
            BeginChunk();
        void* const room = m_next;
        m_next += units * k_unit;
        m_left -= units;
        HeaderOf(room).units = units;
        return room;
    }
    /// What `Take` gave, or null.
    void GiveBack(void* room)
    {
        if (!room)
            return;
        const std::size_t units = HeaderOf(room).units;
        if (units == 0)
            return GiveBackLarge(room);
        m_free[units] = new (room) Free{m_free[units]};
    }

private:
    static constexpr std::size_t k_unit = 16;          // alignment of any object
    static constexpr std::size_t k_largestUnits = 64;  // above it the system serves
    static constexpr std::size_t k_chunk = std::size_t{64} * 1024;

    /// Stands in front of each room.
    struct Header {
        std::size_t units;  // with the header; 0 for one of the system
    };
    struct Free {
        Free* next;
    };
    /// Stands at the front of each chunk.
    struct Chunk {
        Chunk* before;
    };

    /// Of a room that `Take` gave.
    [[nodiscard]] static Header& HeaderOf(void* room) { return static_cast<Header*>(room)[-1]; }
    /// What is left of the chunk at hand is lost.
    void BeginChunk();
    /// From the system, with a header that says so.
    [[nodiscard]] static void* TakeLarge(std::size_t size);
    static void GiveBackLarge(void* room);

    Chunk* m_chunks = nullptr;                          // the last one
    std::array<Free*, k_largestUnits + 1> m_free = {};  // by units
    char* m_next = nullptr;  // in the chunk at hand, behind a header's place
    std::size_t m_left = 0;  // units of it
};
