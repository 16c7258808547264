#pragma once

/// Returns the version, its build date and its label, in memory from `malloc` that the caller
/// frees.
[[nodiscard]] char* QxGetVersionString();

/// Returns the copyright line, set by the build.
[[nodiscard]] const char* QxGetCopyrightString();
