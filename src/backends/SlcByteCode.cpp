// Numbers by name. A name without a number is a fault of the compiler, since the names that the
// writer puts together are those of the table.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "backends/SlcByteCode.h"

#include <array>
#include <cstdint>
#include <iterator>
#include <string>

#include "support/SlcDiagnostics.h"

namespace {

struct NamedNumber {
    std::string_view name;  // empty for a slot that is free
    short number = 0;
};

constexpr std::size_t k_rows = std::size(k_sqxNumbers) - 1;  // without the end
constexpr std::size_t k_slots = 2048;
static_assert(k_slots > 2 * k_rows, "most names are to be found at their first slot");

/// FNV-1a (Glenn Fowler, Landon Curt Noll, Phong Vo).
constexpr std::size_t FirstSlotOf(std::string_view name)
{
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(c)) * 16777619U;
    return hash % k_slots;
}

/// Rows by name: each at the first slot of its name, or the next free one. Made with the program.
constexpr auto k_bySlot = [] {
    std::array<NamedNumber, k_slots> slots = {};
    for (std::size_t row = 0; row < k_rows; ++row) {
        std::size_t slot = FirstSlotOf(k_sqxNumbers[row].name);
        while (!slots[slot].name.empty())
            slot = (slot + 1) % k_slots;
        slots[slot] = {k_sqxNumbers[row].name, k_sqxNumbers[row].number};
    }
    return slots;
}();

}  // namespace

short SlcByteCode::GetInstrNb(std::string_view name)
{
    for (std::size_t slot = FirstSlotOf(name); !k_bySlot[slot].name.empty();
         slot = (slot + 1) % k_slots)
        if (k_bySlot[slot].name == name)
            return k_bySlot[slot].number;
    FatalError("Function unknown (in SlcByteCode::GetInstrNb) " + std::string(name));
}
