// The front of a block is a cut if no edge crosses it, and if all code before it reaches it. Edges
// are counted by differences: an edge from a to b adds one at every front in between, so two
// additions per edge and a prefix sum over all blocks yield the count at every front.
//
//     [a; if f L] [b] [endif L; c] [M:; d]        the guard's edge crosses the front of [b];
//                                                 [endif L; c] and [M:; d] are cuts
//
// Tested by tests/optimizer/SlcDataflowAnalysisTest.cpp, through the analysis that uses it.

#include "optimizer/SlcGraphCuts.h"

#include <algorithm>

namespace {

/// Returns the length of the longest prefix of blocks that all reach the end of the code: code
/// after an infinite loop is not reached from all code before it.
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
            // A forward edge crosses every front between the two blocks; a back edge, every front
            // that it jumps over.
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
