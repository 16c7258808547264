#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

// Rules by which shells complete the command lines of the programs: their options, folders as
// values of options, and files with the endings that a program reads.

/// Returns the file for bash. One file serves all programs; bash looks for it under the name of
/// each program.
[[nodiscard]] std::string SqxBashCompletion(std::span<const SqxProgram* const> all);
/// Returns the file for zsh. One file serves all programs; zsh finds it under the name `_shaderqx`.
[[nodiscard]] std::string SqxZshCompletion(std::span<const SqxProgram* const> all);
/// Returns the file for fish, for one program.
[[nodiscard]] std::string SqxFishCompletion(const SqxProgram& program);
