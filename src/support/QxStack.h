#pragma once

#include <cstddef>

/// The stack of the calling thread, for walks that recurse as deep as the source wants.
class QxStack {
public:
    /// Bytes that are left of it; a very large number where its size is unknown.
    [[nodiscard]] static std::size_t Left();
};
