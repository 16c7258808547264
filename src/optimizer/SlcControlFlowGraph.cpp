// Edges are determined by the last instruction of each block.
//
//     block                          edges, in this order
//     ... goto L                     to L
//     ... goto L if g                to L, to the next
//     ... if f L                     to the next, to the block of `endif L`
//     illuminance S E                to the next, to E
//     ... again S                    to the next, to the block of `illuminance S E`
//     anything else                  to the next, if there is one
//
// This is the order of GetNextBlocks, and visible in dumps.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcControlFlowGraph, ...).

#include "optimizer/SlcControlFlowGraph.h"

#include <string>

#include "icode/SlcICodes.h"
#include "optimizer/SlcBuildBasicBlocks.h"
#include "optimizer/SlcRemoveAt.h"
#include "support/SlcDiagnostics.h"

namespace {

/// Stores in each label that is in the code the number of the first block that begins with it, and
/// -1 in other labels to which the code jumps.
class LabelsBlocksMapper : public SlcAllICodeWalker {
public:
    void Do(const std::vector<SlcBasicBlock>& blocks)
    {
        // Reset the targets of jumps first: an earlier pass may have left numbers in labels that
        // are no longer in the code.
        for (const auto& block : blocks)
            block.GetListICode().back()->ApplyWalker(this);
        m_isMapping = true;
        // Iterate backwards, so that the first block of a label is the one that remains.
        for (auto block = blocks.rbegin(); block != blocks.rend(); ++block) {
            m_block = block->GetBlockId();
            block->GetListICode().front()->ApplyWalker(this);
        }
    }

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcLabelICode> code) override { Begin(*code); }
    void Case(SlcPtr<SlcEndIfICode> code) override { Begin(*code->m_label); }
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override
    {
        Begin(*code->m_startLabel);
        Jump(*code->m_endLabel);
    }
    void Case(SlcPtr<SlcGotoICode> code) override { Jump(*code->m_label); }
    void Case(SlcPtr<SlcIfICode> code) override { Jump(*code->m_label); }
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override { Jump(*code->m_startLabel); }
    void Default(SlcPtr<SlcICode>) override {}

    void Begin(SlcLabelICode& label) const
    {
        if (m_isMapping)
            label.m_place = m_block;
    }
    void Jump(SlcLabelICode& label) const
    {
        if (!m_isMapping)
            label.m_place = -1;
    }

    bool m_isMapping = false;
    int m_block = 0;
};

/// Finds the successors of a block from its last instruction. The labels must be mapped already.
class SuccessorsWalker : public SlcAllICodeWalker {
public:
    struct Successors {
        bool fallsThrough = true;
        bool jumpsFirst = false;  // the jump edge comes before the fall-through edge
        int jump = -1;
    };
    [[nodiscard]] Successors Of(const SlcBasicBlock& block)
    {
        m_successors = {};
        block.GetListICode().back()->ApplyWalker(this);
        return m_successors;
    }

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcGotoICode> code) override
    {
        m_successors.fallsThrough = false;
        JumpTo(*code->m_label);
    }
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override { JumpFirst(*code->m_label); }
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override { JumpFirst(*code->m_label); }
    void Case(SlcPtr<SlcIfICode> code) override { JumpTo(*code->m_label); }
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override { JumpTo(*code->m_endLabel); }
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override { JumpTo(*code->m_startLabel); }
    void Default(SlcPtr<SlcICode>) override {}

    void JumpFirst(const SlcLabelICode& label)
    {
        m_successors.jumpsFirst = true;
        JumpTo(label);
    }
    void JumpTo(const SlcLabelICode& label)
    {
        if (label.m_place < 0)
            FatalError("No block associated to label " + label.Name() +
                       " in SlcBuildControlFlowGraph::LinkBlocks");
        m_successors.jump = label.m_place;
    }

    Successors m_successors;
};

}  // namespace

SlcControlFlowGraph::SlcControlFlowGraph(const SlcListICode& list)
    : m_icodes(list.m_icodes.begin(), list.m_icodes.end()),
      m_blocks(SlcBuildBasicBlocks().BuildBlocks(m_icodes))
{
    FindSuccessors();
    FindPredecessors();
}

void SlcControlFlowGraph::AddEdge(SlcBasicBlock& from, int to)
{
    if (from.m_successorCount == 0 || from.m_successors.front() != to)
        from.m_successors[from.m_successorCount++] = to;
}

void SlcControlFlowGraph::FindSuccessors()
{
    LabelsBlocksMapper().Do(m_blocks);
    SuccessorsWalker walker;
    for (SlcBasicBlock& block : m_blocks) {
        const auto successors = walker.Of(block);
        const int next = block.GetBlockId() + 1;
        if (successors.jumpsFirst)
            AddEdge(block, successors.jump);
        if (successors.fallsThrough && next < static_cast<int>(m_blocks.size()))
            AddEdge(block, next);
        if (successors.jump >= 0 && !successors.jumpsFirst)
            AddEdge(block, successors.jump);
    }
}

// First counts the predecessors of each block to reserve space, then fills in the edges in order.
void SlcControlFlowGraph::FindPredecessors()
{
    std::vector<std::size_t> ends(m_blocks.size() + 1, 0);
    for (const SlcBasicBlock& block : m_blocks)
        for (const int next : block.GetNextBlocks())
            ++ends[next + 1];
    for (std::size_t i = 1; i < ends.size(); ++i)
        ends[i] += ends[i - 1];
    m_predecessors.resize(ends.back());
    for (const SlcBasicBlock& block : m_blocks)
        for (const int next : block.GetNextBlocks())
            m_predecessors[ends[next]++] = block.GetBlockId();
    std::size_t begin = 0;
    for (SlcBasicBlock& block : m_blocks) {
        const std::size_t end = ends[block.GetBlockId()];
        block.m_predecessors = std::span(m_predecessors).subspan(begin, end - begin);
        begin = end;
    }
}

bool SlcControlFlowGraph::Remove(std::span<const std::size_t> places)
{
    std::vector<std::size_t> sizes;
    sizes.reserve(m_blocks.size());
    std::size_t end = 0;
    auto next = places.begin();
    for (const SlcBasicBlock& block : m_blocks) {
        std::size_t size = block.m_icodes.size();
        end += size;
        for (; next != places.end() && *next < end; ++next)
            --size;
        if (size == 0)
            return false;
        sizes.push_back(size);
    }
    SlcRemoveAt(places, m_icodes);
    std::span<const SlcPtr<SlcICode>> rest = m_icodes;
    for (SlcBasicBlock& block : m_blocks) {
        const std::size_t size = sizes[block.GetBlockId()];
        block.m_icodes = rest.first(size);
        rest = rest.subspan(size);
    }
    return true;
}
