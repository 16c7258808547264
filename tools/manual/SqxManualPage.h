#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

/// The manual page of a program of section 1, in the macros of man(7).
[[nodiscard]] std::string SqxManualPage(const SqxProgram& program,
                                        std::span<const SqxProgram* const> all);

/// Rules by which bash completes the command lines of the programs.
[[nodiscard]] std::string SqxBashCompletion(std::span<const SqxProgram* const> all);
