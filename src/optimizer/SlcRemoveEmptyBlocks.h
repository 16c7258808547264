#pragma once

#include <deque>
#include <unordered_map>
#include <vector>

#include "icode/SlcBlockICode.h"
#include "icode/SlcJumpICode.h"
#include "optimizer/SlcControlFlowGraph.h"

/// Removes control flow that has become redundant: unreachable blocks, jumps to the next
/// instruction, labels that no instruction refers to, empty parallel runs and guards, and seams. A
/// seam is the end of a parallel run followed by the begin of the next one; it stays if the two
/// must not be joined. Jumps to an unconditional jump, and some to the second of two adjacent
/// labels, are redirected.
class SlcRemoveEmptyBlocks : public SlcAllICodeWalker {
public:
    /// Drops blocks without predecessors, except the first block, and blocks that lose their last
    /// predecessor thereby. `graph` belongs to `list` and is stale after a change. An unreachable
    /// cycle of blocks stays. True if the list has changed.
    [[nodiscard]] bool RemoveUnreachable(const SlcControlFlowGraph& graph, SlcListICode& list);
    /// Removes all other redundant control flow, but a label that only redirected jumps have used
    /// stays until the next call. Needs no graph. True if the list has changed.
    [[nodiscard]] bool RemoveBlocks(SlcListICode& list);
    /// True if a removed instruction may have read a variable, which may be dead now.
    [[nodiscard]] bool HasRemovedReads() const { return m_hasRemovedReads; }
    /// True if two adjacent runs could not be joined because of the uniform variables that they
    /// access.
    [[nodiscard]] bool HasKeptSeams() const { return m_hasKeptSeams; }
    /// True if `code` may be one of two instructions of which one or both are removed or changed
    /// because they are adjacent.
    [[nodiscard]] static bool IsMark(const SlcICode& code)
    {
        using namespace SlcICodeTraits;
        return code.Is(NamesLabel | OpensRun | ClosesRun | OpensGuard | ClosesGuard);
    }

private:
    enum class RemovePhase {
        CollectLabels,  // drops jumps to the next instruction; collects used labels and aliases
        RemoveLabels,   // redirects jumps and drops unused labels
    };

    /// One walk over the instructions that name labels; true if it changed something.
    [[nodiscard]] bool Phase(RemovePhase phase, SlcListICode& list);
    /// Finds the instructions that name labels, and marks all labels as unused.
    void CollectPlaces(const SlcListICode& list);
    /// Removes the instructions at these ascending positions, and updates `m_places`.
    void RemoveAt(const std::vector<std::size_t>& removed, std::deque<SlcPtr<SlcICode>>& codes);
    /// Removes empty runs and guards, and the seams between runs that may be joined. True if the
    /// list has changed.
    [[nodiscard]] bool RemovePairs(SlcListICode& list);
    /// Records that `newLabel`, or the label that replaces it, replaces `old` in jumps, unless a
    /// replacement of `old` is recorded already. With `onlyIfUsed`, does so only if `newLabel` is
    /// itself replaced, or used by an instruction that has been visited.
    void ReplaceLabel(const SlcLabelICode& old, const SlcLabel& newLabel, bool onlyIfUsed);

    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcBreakICode> code) override;
    void Case(SlcPtr<SlcContinueICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Default(SlcPtr<SlcICode>) override {}

    /// Marks a label as used. In this pass the place of a label is 1 if it is used, otherwise 0.
    static void Use(const SlcLabel& label) { label->m_place = 1; }

    RemovePhase m_phase = RemovePhase::CollectLabels;
    std::vector<std::size_t> m_places;  // of instructions that name labels
    SlcPtr<SlcICode> m_next;            // the instruction after the visited one, or null
    bool m_remove = false;
    bool m_changed = false;
    bool m_hasRemovedReads = false;
    bool m_hasKeptSeams = false;
    std::unordered_map<const SlcLabelICode*, SlcLabel> m_aliases;  // by label: its replacement
};
