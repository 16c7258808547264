#pragma once

#include <optional>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Returns the default values of the parameters in a picture with these settings, in the order of
/// the shader: colors as red, green and blue, and points in the space of the camera, so that
/// setting a parameter to its value here changes nothing. A value that depends on the shading point
/// is empty. Throws `QxHostError` if they cannot be computed.
[[nodiscard]] std::vector<std::optional<QxHostValue>>
SqxViewDefaults(const std::shared_ptr<const QxShader>& shader, const SqxPictureSettings& settings);
