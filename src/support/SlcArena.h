#pragma once

#include <array>
#include <cstddef>
#include <new>

/// Memory for many small objects. In the program `shaderqx`, built without sanitizers, `new`
/// allocates all memory in one arena: for nodes, instructions, operands, symbol entries and the
/// contents of containers. Small blocks are cut from large chunks that live as long as the arena,
/// and are kept in a free list per size when they are freed. So allocation and release cost a few
/// instructions, and a long compilation reuses the memory of its dead objects. Larger blocks come
/// from the system.
///
///     chunk:  [before][header|room][header|room]...        free[units]: room -> room -> null
///
/// The arena only manages memory: owners, such as `SlcPtr` and containers, control the lifetime of
/// objects. An arena is used by one thread.
class SlcArena {
public:
    SlcArena() = default;
    SlcArena(const SlcArena&) = delete;
    SlcArena& operator=(const SlcArena&) = delete;
    /// Frees the chunks, but not the larger blocks that come from the system.
    ~SlcArena();

    /// Allocates memory aligned for any object. Throws `std::bad_alloc` if there is no memory.
    [[nodiscard]] void* Take(std::size_t size)
    {
        if (size > k_largest)
            return TakeLarge(size);
        const std::size_t units = (size + sizeof(Header) + k_unit - 1) / k_unit;
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
    /// Frees memory from `Take` of this arena; does nothing for null.
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
    static constexpr std::size_t k_largestUnits = 64;  // larger blocks come from the system
    static constexpr std::size_t k_chunk = std::size_t{64} * 1024;

    /// Precedes each block.
    struct Header {
        std::size_t units;  // including the header; 0 for a block from the system
    };
    static constexpr std::size_t k_largest = k_largestUnits * k_unit - sizeof(Header);
    struct Free {
        Free* next;
    };
    /// The start of each chunk.
    struct Chunk {
        Chunk* before;
    };

    /// Returns the header of a block from `Take`.
    [[nodiscard]] static Header& HeaderOf(void* room) { return static_cast<Header*>(room)[-1]; }
    /// Allocates a new chunk; the rest of the current one is lost.
    void BeginChunk();
    /// Allocates from the system; marks the block by 0 units in its header.
    [[nodiscard]] static void* TakeLarge(std::size_t size);
    static void GiveBackLarge(void* room);

    Chunk* m_chunks = nullptr;                          // the most recent one
    std::array<Free*, k_largestUnits + 1> m_free = {};  // by size in units
    char* m_next = nullptr;  // the next block in the current chunk; its header precedes it
    std::size_t m_left = 0;  // units left in the chunk
};
