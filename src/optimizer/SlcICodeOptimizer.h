#pragma once

#include <vector>

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcListICode.h"
#include "support/SlcOptionsControl.h"

/// Base of the optimizers that run on a shader's main list. Use one object per list.
class SlcICodeOptimizer : public SlcCollectable, public SlcAllICodeWalker {
public:
    /// Rewrites `list` in place. The shader computes the same values, except that constant folding
    /// may change their rounding or the sign of a zero, and ignores that an operand may be infinite
    /// or not a number.
    virtual void Optimize(SlcPtr<SlcListICode>& list) = 0;
};

/// Returns the optimizers that `options` select, in the order in which they run. `options` must
/// outlive them.
[[nodiscard]] std::vector<SlcPtr<SlcICodeOptimizer>>
SlcGetICodeOptimizerSequence(SlcOptionsControl& options);
