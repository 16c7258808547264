#pragma once

#include <cstddef>

/// Makes the stack able to grow to `wanted` bytes, as far as the user's limit allows, for walks
/// that recurse. The bytes that it can grow to from here on; `wanted` if there is no limit.
[[nodiscard]] std::size_t SlcReserveStack(std::size_t wanted);
