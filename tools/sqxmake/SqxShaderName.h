#pragma once

#include <optional>
#include <string>

/// The name of the shader that a source declares, as far as its text alone shows it, without the
/// preprocessor. Nothing if the text declares none or several, declares it inside of `#if`, or if
/// the name may be a macro.
[[nodiscard]] std::optional<std::string> SqxShaderName(const std::string& source);
