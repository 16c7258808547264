#pragma once

/// Returns the version, its build date and its label, in memory from `malloc` that the caller
/// frees.
[[nodiscard]] char* QxGetVersionString();

/// The copyright line, set by the build.
[[nodiscard]] const char* QxGetCopyrightString();
