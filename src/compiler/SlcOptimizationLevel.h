#pragma once

#include "support/SlcOptionsControl.h"

/// Sets the fields that an optimization level from 0 to 3 determines; other levels are ignored.
void SetOptimizationLevel(int level, SlcOptionsControl& options);
