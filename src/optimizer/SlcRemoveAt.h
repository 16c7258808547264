#pragma once

#include <cstddef>
#include <span>
#include <utility>

/// Removes the elements at `places` from a vector or deque. The positions must be valid, distinct
/// and in ascending order. Elements before the first position are not touched.
template <class Elements>
void SlcRemoveAt(std::span<const std::size_t> places, Elements& elements)
{
    if (places.empty())
        return;
    auto next = places.begin();
    auto kept = elements.begin() + static_cast<std::ptrdiff_t>(*next);
    std::size_t place = *next;
    for (auto element = kept; element != elements.end(); ++element, ++place) {
        if (next != places.end() && *next == place) {
            ++next;
        } else {
            *kept = std::move(*element);
            ++kept;
        }
    }
    elements.erase(kept, elements.end());
}
