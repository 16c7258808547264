#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

// Rules by which shells complete the command lines of the programs: their options, the folders that
// some options take, and the files whose endings a program takes.

/// For bash: one text for all programs, since it is found by each of their names.
[[nodiscard]] std::string SqxBashCompletion(std::span<const SqxProgram* const> all);
/// For zsh: the same, found by its own name, `_shaderqx`.
[[nodiscard]] std::string SqxZshCompletion(std::span<const SqxProgram* const> all);
/// For fish: one program.
[[nodiscard]] std::string SqxFishCompletion(const SqxProgram& program);
