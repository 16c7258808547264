#pragma once

#include <string>
#include <utility>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Converts a text to a value for a parameter: a number, numbers separated by commas, a string, or,
/// for an array, strings separated by commas. For a single color, point, vector or normal, one
/// number stands for three equal ones. Throws `SqxPictureError` if the text does not fit the
/// parameter.
[[nodiscard]] QxHostValue SqxReadParameterValue(const QxShader::Parameter& parameter,
                                                const std::string& text);

/// As above for several parameters: `texts` are pairs of name and text, and the result has their
/// order. `name` is the shader's file as the user wrote it, for messages. Throws `SqxPictureError`
/// also if the shader has no such parameter.
[[nodiscard]] std::vector<std::pair<std::string, QxHostValue>>
SqxReadParameterValues(const QxShader& shader, const std::string& name,
                       const std::vector<std::pair<std::string, std::string>>& texts);
