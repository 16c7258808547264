#pragma once

/// Returns the version with its date and label, in memory from `malloc` that the caller frees; null
/// if there is no memory.
[[nodiscard]] char* QxGetVersionString();

/// Returns the copyright line, set by the build.
[[nodiscard]] const char* QxGetCopyrightString();
