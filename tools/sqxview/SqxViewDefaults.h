#pragma once

#include <optional>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// The default values of a shader's parameters as a picture with these settings sees them: colors
/// as red, green and blue, places in the camera's space, so that setting a parameter to such a
/// value changes nothing. One entry for each parameter, in the shader's order; none for a value
/// that differs from point to point. Throws `QxHostError` if they cannot be computed.
[[nodiscard]] std::vector<std::optional<QxHostValue>>
SqxViewDefaults(const std::shared_ptr<const QxShader>& shader, const SqxPictureSettings& settings);
