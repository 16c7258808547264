// Builds the tree of immediate dominators by the method of Cooper, Harvey and Kennedy: it visits
// the blocks in reverse post-order and makes each a child of the nearest common ancestor of those
// predecessors that are in the tree already, until nothing changes.
//
//     0 -> 1 -> 2, 0 -> 2        2 has the predecessors 1 and 0, whose common ancestor is 0
//
// A walk over the tree numbers when it enters and leaves each block; a dominates b if the interval
// of b lies within that of a.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcCodeMotion, ...).

#include "optimizer/SlcDominators.h"

#include <algorithm>
#include <utility>

SlcDominators::SlcDominators(const SlcControlFlowGraph& graph)
    : m_place(graph.Blocks().size(), -1),
      m_immediate(graph.Blocks().size(), -1),
      m_enter(graph.Blocks().size(), -1),
      m_leave(graph.Blocks().size(), -1)
{
    if (graph.Blocks().empty())
        return;
    OrderBlocks(graph);
    FindImmediateDominators(graph);
    NumberTree();
}

void SlcDominators::OrderBlocks(const SlcControlFlowGraph& graph)
{
    // Each entry is a block and the number of its successors visited so far. The stack is explicit,
    // since generated code may have more blocks than calls can nest.
    std::vector<std::pair<int, std::size_t>> path = {{0, 0}};
    std::vector<bool> visited(graph.Blocks().size(), false);
    visited[0] = true;
    while (!path.empty()) {
        auto& [block, taken] = path.back();
        const auto& successors = graph.Blocks()[block].GetNextBlocks();
        if (taken == successors.size()) {
            m_forwardOrder.push_back(block);
            path.pop_back();
            continue;
        }
        const int next = successors[taken++];
        if (!visited[next]) {
            visited[next] = true;
            path.emplace_back(next, 0);
        }
    }
    std::reverse(m_forwardOrder.begin(), m_forwardOrder.end());
    for (std::size_t place = 0; place < m_forwardOrder.size(); ++place)
        m_place[m_forwardOrder[place]] = static_cast<int>(place);
}

int SlcDominators::NearestCommon(int first, int second) const
{
    while (first != second) {
        while (m_place[first] > m_place[second])
            first = m_immediate[first];
        while (m_place[second] > m_place[first])
            second = m_immediate[second];
    }
    return first;
}

void SlcDominators::FindImmediateDominators(const SlcControlFlowGraph& graph)
{
    m_immediate[0] = 0;
    for (bool changed = true; changed;) {
        changed = false;
        for (const int block : m_forwardOrder) {
            if (block == 0)
                continue;
            int dominator = -1;
            for (const int predecessor : graph.Blocks()[block].GetPredBlocks())
                if (m_immediate[predecessor] >= 0)
                    dominator = dominator < 0 ? predecessor : NearestCommon(dominator, predecessor);
            changed |= m_immediate[block] != dominator;
            m_immediate[block] = dominator;
        }
    }
}

void SlcDominators::NumberTree()
{
    std::vector<std::vector<int>> children(m_immediate.size());
    for (const int block : m_forwardOrder)
        if (block != 0)
            children[m_immediate[block]].push_back(block);
    int counter = 0;
    std::vector<std::pair<int, std::size_t>> path = {{0, 0}};
    m_enter[0] = counter++;
    while (!path.empty()) {
        auto& [block, taken] = path.back();
        if (taken == children[block].size()) {
            m_leave[block] = counter++;
            path.pop_back();
            continue;
        }
        const int child = children[block][taken++];
        m_enter[child] = counter++;
        path.emplace_back(child, 0);
    }
}

bool SlcDominators::Dominates(int dominator, int block) const
{
    return m_enter[dominator] >= 0 && m_enter[block] >= 0 && m_enter[dominator] <= m_enter[block] &&
           m_leave[block] <= m_leave[dominator];
}
