#pragma once

#include <string>

/// The tables of docs/generated-code.md: the macros of built-in functions with their results and
/// arguments, of those that have a plain form only and of those that have all forms.
[[nodiscard]] std::string SqxPlainMacroTable();
[[nodiscard]] std::string SqxFormMacroTable();
