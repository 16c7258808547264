#pragma once

#include <vector>

#include "icode/SlcListICode.h"
#include "optimizer/SlcBasicBlock.h"

/// Cuts a list into basic blocks without edges.
class SlcBuildBasicBlocks {
public:
    /// Blocks in code order, none of them empty; ids are positions.
    [[nodiscard]] std::vector<SlcBasicBlock> BuildBlocks(const SlcListICode& list) const;
};
