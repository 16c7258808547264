#pragma once

#include <string>
#include <vector>

#include "QxDerivatives.h"

/// Returns the numbers of a predefined variable on a slightly curved patch that faces the eye:
/// point by point, or one value if the variable is uniform; empty for any other name.
[[nodiscard]] std::vector<float> SqxDefaultValues(const std::string& name, const QxGrid& grid);
