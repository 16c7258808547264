#pragma once

#include <string>

/// Return tables for docs/generated-code.md: the macros of built-in functions with their results
/// and arguments. One table lists those with only a plain form, the other those with all forms.
[[nodiscard]] std::string SqxPlainMacroTable();
[[nodiscard]] std::string SqxFormMacroTable();
