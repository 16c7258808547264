#pragma once

#include "QxShading.h"

/// A hand-written loop that computes a shader over a grid, with the default values of its
/// parameters.
using PlainLoop = void(const QxHiddenVariables& grid, unsigned int points,
                       const QxLightInput* lights, unsigned int lightCount);
