#pragma once

#include <span>
#include <vector>

#include "optimizer/SlcBasicBlock.h"

/// Cuts code into basic blocks without edges. A block begins in front of each instruction with the
/// trait BeginsBlock and ends behind each with EndsBlock.
class SlcBuildBasicBlocks {
public:
    /// Blocks in code order, none of them empty; ids are positions. They refer to `codes`.
    [[nodiscard]] std::vector<SlcBasicBlock>
    BuildBlocks(std::span<const SlcPtr<SlcICode>> codes) const;
};
