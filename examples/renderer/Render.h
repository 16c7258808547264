#pragma once

#include <functional>
#include <vector>

#include "World.h"

/// The pixels of the world's picture, linear, rows from the top, made by that many threads. The
/// picture is the same with any number. `progress` is called with the finished share, from 0 to 1,
/// by one thread at a time. Throws what a shader throws.
[[nodiscard]] std::vector<QxRGBColor> Render(const World& world, unsigned int threads,
                                             const std::function<void(float)>& progress);
