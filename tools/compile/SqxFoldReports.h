#pragma once

#include <string>

/// Returns the reports of the compiler, with one warning for each uninitialized variable of a
/// function: the first one, with the number of further places, "Variable 'x' may not be initialized
/// (and 3 times after this)".
[[nodiscard]] std::string SqxFoldReports(const std::string& messages);
