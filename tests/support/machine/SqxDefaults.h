#pragma once

#include <string>
#include <vector>

#include "QxDerivatives.h"

/// The numbers of a predefined variable over a grid, point after point, or for the whole grid if
/// it is uniform: a slightly bent patch that the eye looks at.
[[nodiscard]] std::vector<float> SqxDefaultValues(const std::string& name, const QxGrid& grid);
