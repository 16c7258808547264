#pragma once

#include <vector>

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcListICode.h"
#include "support/SlcOptionsControl.h"

/// Base of the optimizers that run on a shader's main list. Use one object per list.
class SlcICodeOptimizer : public SlcCollectable, public SlcAllICodeWalker {
public:
    /// Rewrites `list` in place, without changing its effect on any shading point.
    virtual void Optimize(SlcPtr<SlcListICode>& list) = 0;
};

/// Returns the optimizers that the options select, in the order in which they run.
[[nodiscard]] std::vector<SlcPtr<SlcICodeOptimizer>>
SlcGetICodeOptimizerSequence(SlcOptionsControl& options);
