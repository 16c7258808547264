#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

/// The manual page of a program of section 1, in the macros of man(7): all that `program` tells,
/// and the other programs of `all` as pages to see also.
[[nodiscard]] std::string SqxManualPage(const SqxProgram& program,
                                        std::span<const SqxProgram* const> all);

/// Rules by which bash completes the command lines of the programs: their options, and behind those
/// the files whose endings they take. One text for all, since it is found by each of their names.
[[nodiscard]] std::string SqxBashCompletion(std::span<const SqxProgram* const> all);
