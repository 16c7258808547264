#pragma once

#include <string>

/// Returns the reports of the compiler without repeated warnings on an uninitialized variable of a
/// function. The number of the omitted ones follows the first one: "Variable 'x' may not be
/// initialized (and 3 times after this)".
[[nodiscard]] std::string SqxFoldReports(const std::string& messages);
