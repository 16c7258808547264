// Collects the blocks of each loop after those of the loops inside it; an inner loop then counts as
// one block of the loops around it (Robert Tarjan, "Testing flow graph reducibility", 1974,
// sections 3 and 4). A target of back edges is skipped if it does not dominate the sources of all
// of them; Tarjan's algorithm stops there.
//
//     a: b: ... goto b; ... goto a        b gathers its body; a gathers b as one block
//
// A block that has been gathered points to the head of its loop, and later directly to the head of
// an enclosing loop, since paths are compressed when they are followed.
//
// Tested by tests/optimizer/SlcLoopNestTest.cpp.

#include "optimizer/SlcLoopNest.h"

#include <algorithm>
#include <numeric>

SlcLoopNest::SlcLoopNest(const SlcControlFlowGraph& graph, const SlcDominators& dominators)
    : m_graph(graph),
      m_dominators(dominators),
      m_innermost(graph.Blocks().size(), k_none)
{
    FindHeads();
    if (m_loops.empty())
        return;
    FindMembers();
    NumberPlaces();
    FindExits();
}

void SlcLoopNest::FindHeads()
{
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        if (!IsHead(id))
            continue;
        m_innermost[id] = static_cast<int>(m_loops.size());
        m_loops.push_back({.head = id});
    }
    m_fromOutside.resize(m_loops.size());
    std::iota(m_fromOutside.begin(), m_fromOutside.end(), 0);
    std::sort(m_fromOutside.begin(), m_fromOutside.end(), [&](int a, int b) {
        return m_dominators.Place(m_loops[a].head) < m_dominators.Place(m_loops[b].head);
    });
}

/// True if the block is the target of back edges, all from blocks that it dominates.
bool SlcLoopNest::IsHead(int block) const
{
    bool isHead = false;
    for (const int predecessor : m_graph.Blocks()[block].GetPredBlocks()) {
        if (predecessor < block)
            continue;
        if (!m_dominators.Dominates(block, predecessor))
            return false;
        isHead = true;
    }
    return isHead;
}

void SlcLoopNest::FindMembers()
{
    m_parents.assign(m_loops.size(), k_none);
    m_gathered.resize(m_graph.Blocks().size());
    std::iota(m_gathered.begin(), m_gathered.end(), 0);
    for (auto loop = m_fromOutside.rbegin(); loop != m_fromOutside.rend(); ++loop)
        Gather(*loop);
}

void SlcLoopNest::Gather(int loop)
{
    const int head = m_loops[loop].head;
    std::vector<int> pending;
    const auto enterThroughEdgesTo = [&](int block) {
        for (const int predecessor : m_graph.Blocks()[block].GetPredBlocks()) {
            // Skip an edge from before the loop, or from unreachable code.
            if (!m_dominators.Dominates(head, predecessor))
                continue;
            const int outermost = Outermost(predecessor);
            if (outermost == head)
                continue;
            m_gathered[outermost] = head;
            pending.push_back(outermost);
        }
    };
    enterThroughEdgesTo(head);
    while (!pending.empty()) {
        const int block = pending.back();
        pending.pop_back();
        int& inner = m_innermost[block];
        if (inner == k_none)
            inner = loop;
        else
            m_parents[inner] = loop;
        enterThroughEdgesTo(block);
    }
}

/// Returns the head of the outermost loop that has gathered `block` so far, or the block itself.
int SlcLoopNest::Outermost(int block)
{
    while (m_gathered[block] != block) {
        m_gathered[block] = m_gathered[m_gathered[block]];
        block = m_gathered[block];
    }
    return block;
}

void SlcLoopNest::NumberPlaces()
{
    std::vector<int> sizes(m_loops.size(), 1);  // by loop: itself and the loops inside it
    for (auto loop = m_fromOutside.rbegin(); loop != m_fromOutside.rend(); ++loop)
        if (m_parents[*loop] != k_none)
            sizes[m_parents[*loop]] += sizes[*loop];
    int top = 0;
    std::vector<int> next(m_loops.size());  // place for the next loop directly inside
    for (const int loop : m_fromOutside) {
        int& place = m_parents[loop] == k_none ? top : next[m_parents[loop]];
        m_loops[loop].place = place;
        m_loops[loop].end = place + sizes[loop];
        next[loop] = place + 1;
        place += sizes[loop];
    }
}

void SlcLoopNest::FindExits()
{
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        for (const int next : block.GetNextBlocks()) {
            int loop = m_innermost[id];
            for (; loop != k_none && !Contains(m_loops[loop], next); loop = m_parents[loop]) {
                int& last = m_loops[loop].lastBeforeExits;
                last = last < 0 ? id : m_dominators.NearestCommon(last, id);
            }
        }
    }
}

int SlcLoopNest::PlaceOf(int block) const
{
    return m_innermost[block] == k_none ? k_none : m_loops[m_innermost[block]].place;
}

bool SlcLoopNest::Contains(const Loop& loop, int block) const
{
    const int place = PlaceOf(block);
    return loop.place <= place && place < loop.end;
}

int SlcLoopNest::CommonPlace(int block, int place) const
{
    int loop = m_innermost[block];
    while (loop != k_none && (place < m_loops[loop].place || m_loops[loop].end <= place))
        loop = m_parents[loop];
    return loop == k_none ? k_none : m_loops[loop].place;
}

std::vector<int> SlcLoopNest::BlocksThatAlwaysRun(const Loop& loop) const
{
    std::vector<int> blocks;
    if (loop.lastBeforeExits < 0) {
        for (const auto& block : m_graph.Blocks())
            if (Contains(loop, block.GetBlockId()))
                blocks.push_back(block.GetBlockId());
        return blocks;
    }
    // The head dominates the whole loop, so the dominators of a block in the loop, up to the head,
    // are in the loop too.
    for (int block = loop.lastBeforeExits; block != loop.head; block = m_dominators.Parent(block))
        blocks.push_back(block);
    blocks.push_back(loop.head);
    std::reverse(blocks.begin(), blocks.end());
    if (!std::is_sorted(blocks.begin(), blocks.end()))  // code may jump backward within a loop
        std::sort(blocks.begin(), blocks.end());
    return blocks;
}
