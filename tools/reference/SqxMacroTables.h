#pragma once

#include <string>

// Tables for docs/generated-code.md: the macros of built-in functions, with their results and
// arguments.

/// Returns the table of the functions that have only the plain form.
[[nodiscard]] std::string SqxPlainMacroTable();
/// Returns the table of the functions that have all four forms.
[[nodiscard]] std::string SqxFormMacroTable();
