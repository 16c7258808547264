#pragma once

#include <optional>
#include <string>

/// Returns the name of the shader that a source declares, from its text without preprocessing.
/// Returns nothing if the text declares no shader or several with different names, declares one
/// inside a condition such as `#if`, or if the name may be a macro.
[[nodiscard]] std::optional<std::string> SqxShaderName(const std::string& source);
