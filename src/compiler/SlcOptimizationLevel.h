#pragma once

#include "support/SlcOptionsControl.h"

/// Sets the fields that an optimization level from 0 to 3 determines. Other levels change nothing.
void SetOptimizationLevel(int level, SlcOptionsControl& options);
