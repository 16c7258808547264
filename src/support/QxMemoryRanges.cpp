// Addresses from a library that may hold anything: read only what lies in a known range, and a text
// only if its end does as well.
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp.

#include "support/QxMemoryRanges.h"

#include <cstdint>
#include <cstring>

QxMemoryRanges::Bytes QxMemoryRanges::From(const void* address) const
{
    // Pointers into different objects are compared as numbers only.
    const auto wanted = reinterpret_cast<std::uintptr_t>(address);
    for (const Bytes range : m_ranges) {
        const auto begin = reinterpret_cast<std::uintptr_t>(range.data());
        if (wanted >= begin && wanted - begin < range.size())
            return range.subspan(wanted - begin);
    }
    return {};
}

std::optional<std::string_view> QxMemoryRanges::TextAt(const char* address) const
{
    const Bytes bytes = From(address);
    const void* end = bytes.empty() ? nullptr : std::memchr(bytes.data(), 0, bytes.size());
    if (!end)
        return std::nullopt;
    return std::string_view(address,
                            static_cast<std::size_t>(static_cast<const char*>(end) - address));
}
