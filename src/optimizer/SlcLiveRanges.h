#pragma once

#include <cstdint>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"

/// Instructions in a row, by their places in the code; the entry is place -1.
struct SlcLiveRange {
    int first;
    int last;
};

/// Where each variable holds a value that counts: the instructions that write it, and those behind
/// which it is alive. Two variables interfere if one such place is common to both.
///
/// As ranges this costs a few for each mention of a variable, however many others are alive there;
/// a graph of the pairs would cost the square of what is alive together.
class SlcLiveRanges {
public:
    /// Finds the ranges of all variables; both must be up to date, and are not needed afterwards.
    SlcLiveRanges(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);

    /// In code order; no two overlap or touch. Takes them out.
    [[nodiscard]] std::vector<SlcLiveRange> Take(int variable);

private:
    void AddBlock(const SlcBasicBlock& block);
    void AddDefsAndUses(int place);
    /// Variables that are alive all through blocks which do not write them.
    void AddGroup(const SlcDataflowAnalysis::Group& group);
    [[nodiscard]] std::uint64_t AliveThrough(const SlcDataflowAnalysis::Group& group,
                                             int block) const;
    void Add(int variable, int first, int last);

    const SlcControlFlowGraph& m_graph;
    SlcDataflowAnalysis& m_analysis;
    std::vector<int> m_blockStarts;  // place of the first instruction by block, and of the end
    std::vector<std::vector<SlcLiveRange>> m_ranges;

    // Of the block at hand.
    std::vector<int> m_mentioned;
    std::vector<int> m_aliveTo;  // by variable: the last place of the range that is open, or none
    std::vector<int> m_blockOf;  // by variable: block in which it was mentioned last
};
