#pragma once

#include <string_view>

/// The name at the start of the driver's reports and of the usage text, regardless of the path by
/// which the program was started.
inline constexpr std::string_view k_programName = "shaderqx";
