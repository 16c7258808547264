#pragma once

#include <string>
#include <utility>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Converts a text to a value for a parameter: a string, a number, or numbers separated by commas.
/// For a color, point, vector or normal, one number stands for three equal ones; not in arrays.
/// Throws `SqxPictureError` if the text does not fit the parameter.
[[nodiscard]] QxHostValue SqxReadParameterValue(const QxShader::Parameter& parameter,
                                                const std::string& text);

/// As above for several parameters, by name. `name` is the shader's file as the user wrote it.
[[nodiscard]] std::vector<std::pair<std::string, QxHostValue>>
SqxReadParameterValues(const QxShader& shader, const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& texts);
