#pragma once

#include <vector>

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcListICode.h"
#include "support/SlcOptionsControl.h"

/// Base of the optimizers that a shader's main list is sent through. One object serves one list.
class SlcICodeOptimizer : public SlcCollectable, public SlcAllICodeWalker {
public:
    /// Rewrites `list` in place. What it then does is the same for each shading point.
    virtual void Optimize(SlcPtr<SlcListICode>& list) = 0;
};

/// The optimizers that the options select, in the order in which they run.
[[nodiscard]] std::vector<SlcPtr<SlcICodeOptimizer>>
SlcGetICodeOptimizerSequence(SlcOptionsControl& options);
