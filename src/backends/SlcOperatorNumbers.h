#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <typeinfo>

#include "backends/SlcByteCode.h"
#include "icode/SlcICode.h"
#include "icode/SlcLexType.h"

/// A cache of the numbers of operator instructions, by class and types of two operands. A shader
/// has many operators of few kinds, and composing a name and looking it up takes longer than the
/// rest of the instruction.
class SlcOperatorNumbers {
public:
    /// Returns the number of an instruction. Calls `name` for its name if the number is not cached;
    /// a name without a number is fatal. The name must depend only on the class of the instruction
    /// and the types of the operands. The types must outlive this object.
    template <class Name>
    [[nodiscard]] short Of(const SlcICode& code, const SlcOperand& first, const SlcOperand& second,
                           const Name& name)
    {
        const Key key = {&typeid(code), first->GetType(), second->GetType()};
        Entry& entry = m_entries[SlotOf(key)];
        if (!(entry.key == key))
            entry = {key, SlcByteCode::GetInstrNb(name())};
        return entry.number;
    }

private:
    struct Key {
        const std::type_info* code = nullptr;
        const SlcTypeNode* first = nullptr;
        const SlcTypeNode* second = nullptr;
        [[nodiscard]] bool operator==(const Key&) const = default;
    };
    struct Entry {
        Key key;
        short number = 0;
    };
    static constexpr std::size_t k_slots = 64;

    /// Two keys with one slot evict each other, which costs look-ups but does not affect results.
    [[nodiscard]] static std::size_t SlotOf(const Key& key)
    {
        const auto bits = [](const void* address) {
            return reinterpret_cast<std::uintptr_t>(address) / alignof(std::max_align_t);
        };
        return (bits(key.code) + 5 * bits(key.first) + 7 * bits(key.second)) % k_slots;
    }

    std::array<Entry, k_slots> m_entries;
};
