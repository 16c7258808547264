#pragma once

#include <cstddef>

/// The space on the stack for walks that recurse as deep as the source nests.
class QxStack {
public:
    /// Lets the stack of the main thread grow to `wanted` bytes, as far as the user's limit allows.
    /// Returns the number of bytes that it can grow to, at most `wanted`; 0 if the limit is
    /// unknown. Call `Reserve` before `Left`, which reads the limit only once per thread.
    [[nodiscard]] static std::size_t Reserve(std::size_t wanted);

    /// True if the calling thread is the main one.
    [[nodiscard]] static bool IsOfMainThread();

    /// Returns the number of bytes left on the calling thread's stack; the maximum number if the
    /// size of the stack is unknown.
    [[nodiscard]] static std::size_t Left();
};
