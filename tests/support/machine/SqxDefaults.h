#pragma once

#include <string>
#include <vector>

#include "QxDerivatives.h"

/// Returns the numbers of a predefined variable on a slightly curved patch that faces the eye:
/// point after point, or for the whole grid if it is uniform.
[[nodiscard]] std::vector<float> SqxDefaultValues(const std::string& name, const QxGrid& grid);
