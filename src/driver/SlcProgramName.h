#pragma once

#include <string_view>

/// The program's name in the driver's reports and in the usage text, regardless of the path by
/// which the program was started.
inline constexpr std::string_view k_programName = "shaderqx";
