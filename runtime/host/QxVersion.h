#pragma once

/// Returns a number that no earlier call in this process returned; never 0. All versions come from
/// here, so two objects with the same version are copies. May be called in any thread.
[[nodiscard]] unsigned long QxNextVersion();
