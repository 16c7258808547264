// One walk through each block in reverse code order finds the ranges of the variables that the
// block reads or writes:
//
//     0  x = 1         x: 0..1    written at 0, live after 0 and 1; the read at 2 is not included
//     1  y = 2         y: 1       written, but never read
//     2  y = x         y: 2..     up to the end of the block, if a later block reads it
//
// Any other variable is live throughout the block or nowhere in it. The ranges of blocks through
// which a variable is live come from the groups of the data-flow analysis, one range for each
// sequence of such blocks instead of one for each block.
//
// Tested by tests/optimizer/SlcDataflowAnalysisTest.cpp against the sets of each instruction.

#include "optimizer/SlcLiveRanges.h"

#include <algorithm>
#include <bit>

namespace {

constexpr int k_entry = -1;  // position before the code
constexpr int k_none = -2;   // no position

}  // namespace

SlcLiveRanges::SlcLiveRanges(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis)
    : m_analysis(analysis),
      m_ranges(analysis.Variables().Count()),
      m_liveTo(analysis.Variables().Count(), k_none),
      m_blockOf(analysis.Variables().Count(), -1)
{
    int place = 0;
    for (const auto& block : graph.Blocks()) {
        m_blockStarts.push_back(place);
        place += static_cast<int>(block.GetListICode().size());
    }
    m_blockStarts.push_back(place);
    for (const auto& block : graph.Blocks())
        AddBlock(block);
    for (const auto& group : analysis.Groups())
        AddGroup(group);
}

std::vector<SlcLiveRange> SlcLiveRanges::Take(int variable)
{
    std::vector<SlcLiveRange>& found = m_ranges[variable];
    std::sort(found.begin(), found.end(),
              [](const SlcLiveRange& a, const SlcLiveRange& b) { return a.first < b.first; });
    std::vector<SlcLiveRange> merged;
    for (const SlcLiveRange& range : found) {
        if (!merged.empty() && range.first <= merged.back().last + 1)
            merged.back().last = std::max(merged.back().last, range.last);
        else
            merged.push_back(range);
    }
    std::vector<SlcLiveRange>().swap(found);
    return merged;
}

void SlcLiveRanges::AddBlock(const SlcBasicBlock& block)
{
    const int start = m_blockStarts[block.GetBlockId()];
    const auto& codes = block.GetListICode();
    const int end = start + static_cast<int>(codes.size()) - 1;
    SlcDefUse& defUse = m_analysis.DefUse();
    const auto mention = [&](int variable) {
        if (m_blockOf[variable] == block.GetBlockId())
            return;
        m_blockOf[variable] = block.GetBlockId();
        m_mentioned.push_back(variable);
        if (m_analysis.IsLiveOut(block.GetBlockId(), variable))
            m_liveTo[variable] = end;
    };
    for (int place = end; place >= start; --place) {
        defUse.Compute(codes[place - start]);
        for (const int variable : defUse.Defs())
            mention(variable);
        for (const int variable : defUse.Uses())
            mention(variable);
        AddDefsAndUses(place);
    }
    for (const int variable : m_mentioned) {
        if (m_liveTo[variable] >= start)
            Add(variable, start, m_liveTo[variable]);
        m_liveTo[variable] = k_none;
    }
    m_mentioned.clear();
}

void SlcLiveRanges::AddDefsAndUses(int place)
{
    for (const int variable : m_analysis.DefUse().Defs()) {
        Add(variable, place, std::max(m_liveTo[variable], place));
        m_liveTo[variable] = k_none;
    }
    for (const int variable : m_analysis.DefUse().Uses())
        if (m_liveTo[variable] == k_none)
            m_liveTo[variable] = place - 1;
}

void SlcLiveRanges::AddGroup(const SlcDataflowAnalysis::Group& group)
{
    std::vector<int> starts(group.variables.size(), k_entry);
    const auto close = [&](std::uint64_t ended, int place) {
        for (; ended != 0; ended &= ended - 1) {
            const int bit = std::countr_zero(ended);
            Add(group.variables[bit], starts[bit], place - 1);
        }
    };
    // A variable that is live-in at the first block of the group is live everywhere before it; any
    // other variable is dead there.
    std::uint64_t open = group.LiveInAt(0);
    for (int block = group.first; block < group.end; ++block) {
        const std::uint64_t through = LiveThrough(group, block);
        const int place = m_blockStarts[block];
        close(open & ~through, place);
        for (std::uint64_t begun = through & ~open; begun != 0; begun &= begun - 1)
            starts[std::countr_zero(begun)] = place;
        open = through;
    }
    close(open, m_blockStarts[group.end]);
}

std::uint64_t SlcLiveRanges::LiveThrough(const SlcDataflowAnalysis::Group& group, int block) const
{
    return group.LiveInAt(block) & m_analysis.LiveAfter(group, block) &
           ~group.defs[block - group.first];
}

void SlcLiveRanges::Add(int variable, int first, int last)
{
    m_ranges[variable].push_back({first, last});
}
