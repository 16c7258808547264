#pragma once

/// Returns a number that no earlier call in this process returned; never 0. The versions of
/// parameter sets and of the file handles of scenes come from here, so two sets with the same
/// version have the same values. May be called in any thread.
[[nodiscard]] unsigned long QxNextVersion();
