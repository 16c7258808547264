#pragma once

#include <string>

/// Returns the reports of the compiler, in which each warning on an uninitialized variable of a
/// function appears only once. The number of omitted repetitions follows it: "Variable 'x' may not
/// be initialized (and 3 times after this)".
[[nodiscard]] std::string SqxFoldReports(const std::string& messages);
