// A block is a cut if no edge crosses its front, and if all blocks before it reach the end of the
// code. Each edge adds one at the first front that it crosses and subtracts one after the last, so
// that a prefix sum over all blocks yields the number of edges across each front.
//
//     [a; if f L] [b] [endif L; c] [M:; d]        the edge of the guard crosses the front of [b];
//                                                 the other three blocks are cuts
//
// Tested by tests/optimizer/SlcDataflowAnalysisTest.cpp, through the analysis that uses it.

#include "optimizer/SlcGraphCuts.h"

#include <algorithm>

namespace {

/// Returns the length of the longest prefix of blocks that all reach the last block. No block after
/// an infinite loop is a cut, since the loop does not reach it.
int BlocksThatEnd(const SlcControlFlowGraph& graph)
{
    const auto& blocks = graph.Blocks();
    const int count = static_cast<int>(blocks.size());
    std::vector<bool> ends(blocks.size(), false);
    std::vector<int> pending = {count - 1};
    ends[count - 1] = true;
    while (!pending.empty()) {
        const int block = pending.back();
        pending.pop_back();
        for (const int predecessor : blocks[block].GetPredBlocks()) {
            if (!ends[predecessor]) {
                ends[predecessor] = true;
                pending.push_back(predecessor);
            }
        }
    }
    return static_cast<int>(std::find(ends.begin(), ends.end(), false) - ends.begin());
}

/// Returns, for each block, how many edges cross its front.
std::vector<int> EdgesAcross(const SlcControlFlowGraph& graph)
{
    std::vector<int> across(graph.Blocks().size() + 1, 0);
    for (const auto& block : graph.Blocks()) {
        const int from = block.GetBlockId();
        for (const int to : block.GetNextBlocks()) {
            // A forward edge crosses the fronts of the blocks between its ends. A back edge from a
            // later block also crosses the front of that block.
            ++across[std::min(from, to) + 1];
            --across[std::max(from + 1, to)];
        }
    }
    for (std::size_t block = 1; block < across.size(); ++block)
        across[block] += across[block - 1];
    return across;
}

}  // namespace

SlcGraphCuts::SlcGraphCuts(const SlcControlFlowGraph& graph)
{
    const int count = static_cast<int>(graph.Blocks().size());
    if (count == 0)
        return;
    const int usable = BlocksThatEnd(graph);
    const std::vector<int> across = EdgesAcross(graph);
    const auto isCut = [&](int block) {
        return block == 0 || (block <= usable && block < count && across[block] == 0);
    };
    m_lastUpTo.resize(count);
    m_firstAfter.resize(count);
    for (int block = 0, last = 0; block < count; ++block) {
        last = isCut(block) ? block : last;
        m_lastUpTo[block] = last;
    }
    for (int block = count - 1, first = count; block >= 0; --block) {
        m_firstAfter[block] = first;
        first = isCut(block) ? block : first;
    }
}
