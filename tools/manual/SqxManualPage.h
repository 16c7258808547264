#pragma once

#include <span>
#include <string>

#include "options/SqxOptionTable.h"

/// The manual page of a program of section 1, in the macros of man(7): all that `program` contains,
/// and the other programs of `all` as pages to see also.
[[nodiscard]] std::string SqxManualPage(const SqxProgram& program,
                                        std::span<const SqxProgram* const> all);
