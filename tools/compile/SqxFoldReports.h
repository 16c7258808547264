#pragma once

#include <string>

/// The compiler's reports, with each warning of an uninitialized variable shown once for a
/// function: at its first place, with the number of further places, "Variable 'x' may not be
/// initialized (and 3 times after this)".
[[nodiscard]] std::string SqxFoldReports(const std::string& messages);
