#pragma once

/// Returns a number that no earlier call in this process returned; never 0. Anything that has
/// versions may use it, so numbers of different objects never agree. May be called in any thread.
[[nodiscard]] unsigned long QxNextVersion();
