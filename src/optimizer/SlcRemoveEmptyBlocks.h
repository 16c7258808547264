#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "icode/SlcBlockICode.h"
#include "icode/SlcJumpICode.h"
#include "optimizer/SlcControlFlowGraph.h"

/// Removes what has become pointless: blocks that nothing reaches, jumps to the next instruction,
/// labels without a jump, empty parallel runs and guards, and the seam between two parallel runs.
class SlcRemoveEmptyBlocks : public SlcAllICodeWalker {
public:
    /// Drops blocks without predecessors, except the first, and those that lose their last
    /// predecessor by this. `graph` belongs to `list` and is stale after a change. A cycle of
    /// blocks that nothing enters stays. True if it changed something.
    [[nodiscard]] bool RemoveUnreachable(const SlcControlFlowGraph& graph, SlcListICode& list);
    /// Needs no graph. True if it changed something.
    [[nodiscard]] bool RemoveBlocks(SlcListICode& list);
    /// Something that is gone has read a variable, which may be dead now.
    [[nodiscard]] bool HasRemovedReads() const { return m_hasRemovedReads; }
    /// Two runs lie side by side that would be one if they accessed other uniform variables.
    [[nodiscard]] bool HasKeptSeams() const { return m_hasKeptSeams; }
    /// True if `code` may be one of two neighbours of which something is removed.
    [[nodiscard]] static bool IsMark(const SlcICode& code)
    {
        using namespace SlcICodeTraits;
        return code.Is(NamesLabel | OpensRun | ClosesRun | OpensGuard | ClosesGuard);
    }

private:
    enum class RemovePhase {
        CollectLabels,  // drops jumps to the next instruction and finds out what is referred to
        RemoveLabels,   // redirects jumps and drops labels
        RemovePairs,    // drops pairs of marks with nothing between them
    };

    /// One walk over the instructions that name labels; true if it changed something.
    [[nodiscard]] bool Phase(RemovePhase phase, SlcListICode& list);
    /// Finds those instructions, and takes all labels for unused.
    void CollectPlaces(const SlcListICode& list);
    /// Takes instructions at rising places out.
    void RemoveAt(const std::vector<std::size_t>& removed, std::deque<SlcPtr<SlcICode>>& codes);
    /// Brackets with nothing between them, and seams between runs that may become one.
    [[nodiscard]] bool RemovePairs(SlcListICode& list);
    /// Who jumps to `old` is to jump to `newLabel`; if `onlyIfUsed`, only where someone jumps
    /// to that already.
    void ReplaceLabel(const SlcLabelICode& old, const SlcLabel& newLabel, bool onlyIfUsed);

    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Default(SlcPtr<SlcICode>) override {}

    /// Something refers to it. The place of a label says so here: 1, or 0 for one that nothing
    /// refers to.
    static void Use(const SlcLabel& label) { label->m_place = 1; }

    RemovePhase m_phase = RemovePhase::CollectLabels;
    std::vector<std::size_t> m_places;  // of instructions that name labels
    SlcPtr<SlcICode> m_next;            // after the instruction being visited, or null
    bool m_remove = false;
    bool m_changed = false;
    bool m_hasRemovedReads = false;
    bool m_hasKeptSeams = false;
    std::unordered_map<const SlcLabelICode*, SlcLabel>
        m_aliases;  // what takes the place of a label
};
