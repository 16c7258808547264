#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

/// Returns the manual page of a program, for section 1, in the macros of man(7): the texts of
/// `program`, and the names of the other programs of `all` under "see also".
[[nodiscard]] std::string SqxManualPage(const SqxProgram& program,
                                        std::span<const SqxProgram* const> all);
