#pragma once

#include <string_view>

/// The name that the driver's reports and the usage text begin with, whatever path the program
/// was started by.
inline constexpr std::string_view k_programName = "shaderqx";
