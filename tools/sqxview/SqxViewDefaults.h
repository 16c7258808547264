#pragma once

#include <optional>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Returns the default values of all parameters, in the order of the shader, in a picture with the
/// settings: colors as red, green and blue, and points in the space of the camera, so that setting
/// a parameter to the returned value changes nothing. A value that depends on the shading point is
/// empty. Throws `QxHostError` if the values cannot be computed.
[[nodiscard]] std::vector<std::optional<QxHostValue>>
SqxViewDefaults(const std::shared_ptr<const QxShader>& shader, const SqxPictureSettings& settings);
