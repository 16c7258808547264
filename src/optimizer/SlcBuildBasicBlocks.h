#pragma once

#include <span>
#include <vector>

#include "optimizer/SlcBasicBlock.h"

/// Splits code into basic blocks without edges. A block begins before each instruction with the
/// trait BeginsBlock and ends after each one with EndsBlock.
class SlcBuildBasicBlocks {
public:
    /// Returns the blocks in code order, none of them empty, numbered from 0. The blocks refer to
    /// `codes`.
    [[nodiscard]] std::vector<SlcBasicBlock>
    BuildBlocks(std::span<const SlcPtr<SlcICode>> codes) const;
};
