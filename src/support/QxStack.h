#pragma once

#include <cstddef>

/// The stack of the calling thread, for walks that recurse as deep as the source wants.
class QxStack {
public:
    /// Lets the stack of the first thread grow to so many bytes, as far as the user's limit
    /// allows. The bytes that it can grow to; `wanted` if there is no limit. To be called before
    /// `Left`, which asks for the limit once.
    [[nodiscard]] static std::size_t Reserve(std::size_t wanted);

    /// Bytes that are left of it; a very large number where its size is unknown.
    [[nodiscard]] static std::size_t Left();
};
