#pragma once

#include "QxShading.h"

/// A shader as one would write it by hand for a grid, with the parameters' default values.
using PlainLoop = void(const QxHiddenVariables& grid, unsigned int points,
                       const QxLightInput* lights, unsigned int lightCount);
