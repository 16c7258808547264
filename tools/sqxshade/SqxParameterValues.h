#pragma once

#include <string>
#include <utility>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// The value that a text gives a parameter: a text, a number, or numbers between commas; three
/// equal ones may be one. Throws `SqxPictureError` if it does not fit.
[[nodiscard]] QxHostValue SqxReadParameterValue(const QxShader::Parameter& parameter,
                                                const std::string& text);

/// The same for parameters by name, of a shader that the user calls `name`.
[[nodiscard]] std::vector<std::pair<std::string, QxHostValue>>
SqxReadParameterValues(const QxShader& shader, const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& texts);
