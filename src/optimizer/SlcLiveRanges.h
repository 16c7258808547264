#pragma once

#include <cstdint>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"

/// A range of consecutive instructions, by position in the code; the entry is position -1. Both
/// ends belong to the range.
struct SlcLiveRange {
    int first;
    int last;
};

/// The live ranges of each variable: the instructions that write it, and those after which it is
/// live. Two variables interfere if their ranges overlap.
///
/// Each mention of a variable adds only a few ranges, regardless of how many others are live there;
/// an interference graph would be quadratic in the number of variables that are live together.
class SlcLiveRanges {
public:
    /// Computes the ranges of all variables of the analysis. `graph` and `analysis` must be up to
    /// date, and are not needed afterwards.
    SlcLiveRanges(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// Returns the ranges of a variable in code order, and frees them here, so that a second call
    /// returns none. No two ranges overlap or are adjacent.
    [[nodiscard]] std::vector<SlcLiveRange> Take(int variable);

private:
    void AddBlock(const SlcBasicBlock& block);
    void AddDefsAndUses(int place);
    /// Adds, for each variable of the group, the ranges of blocks through which it is live and that
    /// do not write it.
    void AddGroup(const SlcDataflowAnalysis::Group& group);
    [[nodiscard]] std::uint64_t LiveThrough(const SlcDataflowAnalysis::Group& group,
                                            int block) const;
    void Add(int variable, int first, int last);

    SlcDataflowAnalysis& m_analysis;
    std::vector<int> m_blockStarts;  // by block: position of its first instruction; then the end
    std::vector<std::vector<SlcLiveRange>> m_ranges;

    // State of the current block.
    std::vector<int> m_mentioned;  // variables read or written so far
    std::vector<int> m_liveTo;     // by variable: end of the range that the walk is in, or `k_none`
    std::vector<int> m_blockOf;    // by variable: the last visited block that reads or writes it
};
