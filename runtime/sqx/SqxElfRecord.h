#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <string_view>

/// Returns the record at an offset; none if it would exceed the bytes.
template <class Record>
std::optional<Record> RecordAt(std::span<const std::byte> bytes, std::uint64_t place)
{
    if (place > bytes.size() || bytes.size() - place < sizeof(Record))
        return std::nullopt;
    Record record;
    std::memcpy(&record, bytes.data() + place, sizeof record);
    return record;
}

/// Returns the contents of the section with this name in the bytes of a whole library, cut off at
/// the end of the file; empty if there is no such section. O(n) for n sections.
[[nodiscard]] std::span<const std::byte> SqxElfSection(std::span<const std::byte> file,
                                                       std::string_view name);
