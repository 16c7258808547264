#pragma once

/// Returns a number that no earlier call in this process returned; never 0. All objects with a
/// version get it here, so two objects never have the same one. May be called in any thread.
[[nodiscard]] unsigned long QxNextVersion();
