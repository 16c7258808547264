#pragma once

#include <string>

// Tables for docs/generated-code.md: the macros of built-in functions, with their results and
// arguments. They omit the functions that have a separate table there: those with lists of
// arguments, queries to the renderer and operations on neighbouring points.

/// Returns the table of the functions that have only the plain form, for one point or for uniform
/// data.
[[nodiscard]] std::string SqxPlainMacroTable();
/// Returns the table of the functions that have all four forms: the plain form, and that for the
/// whole grid without a condition, with a true one and with a false one.
[[nodiscard]] std::string SqxFormMacroTable();
