#include "support/SlcArena.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <random>
#include <vector>

namespace {

struct Room {
    unsigned char* place;
    std::size_t size;
    unsigned char mark;
};

void ExpectUntouched(const Room& room)
{
    for (std::size_t i = 0; i < room.size; ++i)
        ASSERT_EQ(room.place[i], room.mark) << "byte " << i << " of " << room.size;
}

// Each block is filled with the low byte of its step number. A later block that overlaps it changes
// some of these bytes, unless the two numbers differ by a multiple of 256.
TEST(SlcArena, BlocksOfAllSizesDoNotOverlap)
{
    SlcArena arena;
    std::mt19937 random(1);
    std::vector<Room> rooms;
    for (int step = 0; step < 20000; ++step) {
        if (!rooms.empty() && random() % 5 < 2) {
            std::swap(rooms[random() % rooms.size()], rooms.back());
            ExpectUntouched(rooms.back());
            arena.GiveBack(rooms.back().place);
            rooms.pop_back();
            continue;
        }
        const std::size_t size = random() % (step % 50 == 0 ? 5000 : 200);
        auto* const place = static_cast<unsigned char*>(arena.Take(size));
        ASSERT_EQ(reinterpret_cast<std::uintptr_t>(place) % alignof(std::max_align_t), 0U) << size;
        const auto mark = static_cast<unsigned char>(step);
        std::memset(place, mark, size);
        rooms.push_back({place, size, mark});
    }
    for (const Room& room : rooms) {
        ExpectUntouched(room);
        arena.GiveBack(room.place);
    }
}

TEST(SlcArena, ReusesFreedBlocks)
{
    SlcArena arena;
    arena.GiveBack(nullptr);
    for (const std::size_t size : {0U, 1U, 8U, 9U, 24U, 100U, 1000U}) {
        void* const first = arena.Take(size);
        arena.GiveBack(first);
        EXPECT_EQ(arena.Take(size), first) << size;
    }
}

}  // namespace
