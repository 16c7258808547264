#pragma once

#include <string>
#include <utility>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Converts a text to a value for a parameter: a string, a number, or numbers separated by commas;
/// one number also stands for three equal ones. Throws `SqxPictureError` if it does not fit.
[[nodiscard]] QxHostValue SqxReadParameterValue(const QxShader::Parameter& parameter,
                                                const std::string& text);

/// As above for several parameters, by name. `name` is the shader's file as the user wrote it.
[[nodiscard]] std::vector<std::pair<std::string, QxHostValue>>
SqxReadParameterValues(const QxShader& shader, const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& texts);
