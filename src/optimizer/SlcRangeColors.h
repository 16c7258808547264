#pragma once

#include <vector>

#include "optimizer/SlcLiveRanges.h"

/// Colors variables that are given as ranges of code: variables with the same color do not
/// interfere.
///
/// Greedy, as in Gregory Chaitin and others, "Register allocation via coloring" (1981), without
/// spilling: each variable gets the first color that is free where it is live. The colors are the
/// leaves of a tree in which each node knows where all colors below it are taken, so that the
/// search for the first free color skips subtrees where a variable is live at such a place. For a
/// variable that is live at one instruction it visits O(log n) nodes for n colors; for others, also
/// subtrees in which each color is taken at another instruction.
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
    /// Marks `ranges` as taken by `color`, up to the root.
    void Occupy(int color, const Ranges& ranges);

    // Ranges in which all colors below a node are taken: the root is node 1, the children of node i
    // are 2 i and 2 i + 1, the colors are the last m_leaves nodes.
    std::vector<Ranges> m_taken = {{}, {}};
    std::size_t m_leaves = 1;
    std::size_t m_colors = 0;  // that have been assigned
};
