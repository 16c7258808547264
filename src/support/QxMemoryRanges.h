#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

/// Parts of memory that may be read, for data that is not trusted to point into itself.
class QxMemoryRanges {
public:
    using Bytes = std::span<const std::byte>;

    /// The memory must stay as long as anyone asks. Ranges do not overlap.
    void Add(Bytes range) { m_ranges.push_back(range); }

    /// What the range that holds the address has from there on; empty if none holds it.
    [[nodiscard]] Bytes From(const void* address) const;
    /// The text at the address; none unless a range holds it with the null at its end.
    [[nodiscard]] std::optional<std::string_view> TextAt(const char* address) const;

private:
    std::vector<Bytes> m_ranges;
};
