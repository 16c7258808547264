#pragma once

#include <vector>

#include "optimizer/SlcLiveRanges.h"

/// Colors variables that are given as ranges of code: variables with the same color do not
/// interfere.
///
/// Greedy, without spilling (compare Gregory Chaitin and others, "Register allocation via
/// coloring", 1981): in the order of the calls, each variable gets the first color that is free
/// where it is live. The colors are the leaves of a tree. Each node knows where all colors below it
/// are taken, and the search for the first free color skips a subtree if the new variable is live
/// there. For a variable that is live at one instruction the search visits O(log n) nodes for n
/// colors. For others it may also search a subtree in vain: none of the instructions has all colors
/// of the subtree taken, but each color is taken at one of them.
class SlcRangeColors {
public:
    /// Assigns a variable the first color, from 0, that is free in its `ranges`, and returns the
    /// color. The ranges must be in ascending order and disjoint, as `SlcLiveRanges` returns them.
    [[nodiscard]] int Take(const std::vector<SlcLiveRange>& ranges);

private:
    using Ranges = std::vector<SlcLiveRange>;

    void Grow();
    /// Returns the first color below `node` that is free in all of `ranges`; -1 if there is none.
    [[nodiscard]] int FirstFree(std::size_t node, const Ranges& ranges) const;
    /// Marks `color` as taken in `ranges`, and updates the nodes above it where that fills them.
    void Occupy(int color, const Ranges& ranges);

    // Ranges in which all colors below a node are taken: the root is node 1, the children of node i
    // are 2 i and 2 i + 1, the colors are the last m_leaves nodes.
    std::vector<Ranges> m_taken = {{}, {}};
    std::size_t m_leaves = 1;
    std::size_t m_colors = 0;  // that have been assigned
};
