#pragma once

#include <optional>
#include <vector>

#include "picture/SqxPictureSettings.h"

/// Returns the default values of all parameters, in the order of the shader, in a picture with the
/// settings: colors as red, green and blue, and points that the source gives in a named space in
/// the space of the camera, so that setting a parameter to the returned value changes nothing.
/// This does not hold for values that are computed with several spaces, for example by `transform`:
/// there, all spaces count as that of the camera. A value that depends on the shading point is
/// empty. Throws `QxHostError` if the values cannot be computed, or if the shader fails at the one
/// point for which it is run.
[[nodiscard]] std::vector<std::optional<QxHostValue>>
SqxViewDefaults(const std::shared_ptr<const QxShader>& shader, const SqxPictureSettings& settings);
