#pragma once

#include <vector>

#include "optimizer/SlcLiveRanges.h"

/// Colors for variables that are given as ranges of code: those of one color never meet.
///
/// Greedy, as in Gregory Chaitin and others, "Register allocation via coloring" (1981), without
/// spilling: each variable takes the first color that is free where it is alive. The colors are the
/// leaves of a tree in which each node knows where all colors below it are taken, so that the walk
/// to the first free one passes full subtrees by: O(log n) where many variables are alive together.
class SlcRangeColors {
public:
    /// The color of a variable, counted from 0; `ranges` as `SlcLiveRanges` gives them.
    [[nodiscard]] int Take(const std::vector<SlcLiveRange>& ranges);

private:
    using Ranges = std::vector<SlcLiveRange>;

    void Grow();
    /// The first color below `node` that is free in all of `ranges`; -1 if there is none.
    [[nodiscard]] int FirstFree(std::size_t node, const Ranges& ranges) const;
    /// Enters `ranges` as taken by `color`, up to the root.
    void Occupy(int color, const Ranges& ranges);

    // Where all colors below each node are taken: the root is node 1, the children of node i are
    // 2 i and 2 i + 1, the colors are the last m_leaves nodes.
    std::vector<Ranges> m_taken = {{}, {}};
    std::size_t m_leaves = 1;
    std::size_t m_colors = 0;
};
