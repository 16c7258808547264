#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"
#include "optimizer/SlcGraphCuts.h"
#include "optimizer/SlcNumberLists.h"
#include "support/SlcText.h"

/// Live variables at the borders of each block.
///
/// Stores the sets only at block borders, and only for variables that may be live at a border; a
/// pass that needs the sets at an instruction derives them with `SlcLiveTest`. The variables are in
/// groups of at most 64. A set of a group has one bit per variable and block, for the range of
/// blocks that contains all mentions of its variables: after the range they are dead, and before it
/// each of them is live everywhere or nowhere. The memory of a group is linear in its range, which
/// keeps the sets of a long shader small if its variables are short-lived.
class SlcDataflowAnalysis {
public:
    /// Variables that are named in about the same range of blocks.
    struct Group {
        int first = 0;  // first block of the range; `first` and `end` are cuts (`SlcGraphCuts`)
        int end = 0;
        bool isChanging = false;            // `uses` or `defs` may differ from those last solved
        std::uint64_t aroundLoops = 0;      // live at the target of some back edge
        std::vector<int> variables;         // at most 64, by bit
        std::vector<std::uint64_t> uses;    // by block of the range: read before written
        std::vector<std::uint64_t> defs;    // by block: written
        std::vector<std::uint64_t> liveIn;  // by block: live-in
        std::vector<std::uint64_t> before;  // while `isChanging`: the last solution of `liveIn`

        /// Returns the live-in set of a block.
        [[nodiscard]] std::uint64_t LiveInAt(int block) const
        {
            return block >= end ? 0 : liveIn[block < first ? 0 : block - first];
        }
    };

    /// All three must outlive the analysis. As a side effect, every tracked variable that the code
    /// accesses and that is not uniform gets the unknown detail, which the back ends treat as
    /// varying.
    SlcDataflowAnalysis(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables,
                        SlcDefUse& defUse);

    /// True if the variable is live at the front, or at the end, of a block: some path from there
    /// reads it before writing it. O(1).
    [[nodiscard]] bool IsLiveIn(int block, int variable) const;
    [[nodiscard]] bool IsLiveOut(int block, int variable) const;
    /// Returns the groups, for passes that process whole words of variables.
    [[nodiscard]] const std::vector<Group>& Groups() const { return m_groups; }
    /// Returns the variables of a group that are live-out at a block of its range, as bits.
    [[nodiscard]] std::uint64_t LiveAfter(const Group& group, int block) const;

    // For a pass that removes code while walking the blocks in reverse code order.

    /// Returns the variables that the block read before it wrote them when the analysis was made.
    [[nodiscard]] std::span<const int> ReadFirst(int block) const { return m_blockUse[block]; }
    /// Records that the block no longer reads `variable`, a member of `ReadFirst`, before writing
    /// it.
    void ForgetRead(int block, int variable);
    /// Recomputes the live-in set of the block. The blocks after it must be up to date. Variables
    /// that were live around a loop may stay live in it, so the set may be too large.
    void RefreshLiveIn(int block);

    /// Updates the analysis after a pass that has changed instructions of these blocks, so that
    /// they read and write less, and has kept the graph. `ReadFirst`, and the uses and defs that
    /// `Print` shows, remain those of the original code. True if a variable is no longer live at
    /// the target of a back edge, where it was live when the analysis was made or last updated.
    bool Update(std::span<const int> blocks);

    /// True if the variable was live at the target of a back edge when the analysis was made or
    /// last updated.
    [[nodiscard]] bool IsLiveAroundLoop(int variable) const;

    /// Returns what an instruction of the graph reads and writes. The instruction must not have
    /// changed since the analysis was made or last updated.
    [[nodiscard]] SlcDefUse::Facts FactsOf(const SlcICode& code) const { return m_defUse.Of(code); }

    /// Return the objects that the constructor was given.
    [[nodiscard]] const SlcVariableNumbers& Variables() const { return m_variables; }
    [[nodiscard]] SlcDefUse& DefUse() { return m_defUse; }

    /// Prints the sets of each block by name. Not linear, for debugging only.
    void Print(SlcText& out) const;

private:
    /// A variable that some block reads before writing it.
    struct Followed {
        int variable = 0;
        int first = 0;  // its range
        int end = 0;
    };
    struct Place {
        int group = -1;  // -1 for a variable that no block reads before writing it
        int bit = 0;
    };

    /// Collects the variables that each block reads before writing them, and those that it writes.
    /// Resets their details.
    void CollectBlockSets();
    /// Returns the variables that may be live at some border, each with the range between the cuts
    /// around its mentions.
    [[nodiscard]] std::vector<Followed> FollowedVariables() const;
    /// Groups variables whose ranges are close and similar in size, and solves each group.
    void MakeGroups(const std::vector<Followed>& followed);
    /// Fills in the uses and defs of the blocks.
    void FillGroups();
    /// Recomputes the uses and defs of a block.
    void RefillGroups(int block);
    /// Marks the group as changing. At the first change after it was solved, saves its `liveIn`.
    static void BeginChange(Group& group);
    /// Solves the liveness equations for the variables of a group, whose `liveIn` must be empty at
    /// first; finds the smallest solution.
    void Solve(Group& group);
    [[nodiscard]] bool HasChangedAtLoops(const Group& group) const;
    /// Records which variables are live around loops.
    void RecordLiveAtLoops(Group& group) const;
    /// Recomputes the live-in set of the block from its live-out set. True if it changed.
    [[nodiscard]] bool UpdateLiveIn(Group& group, int block) const;
    void PrintNames(SlcText& out, const char* title, std::vector<int> numbers) const;

    const SlcControlFlowGraph& m_graph;
    const SlcVariableNumbers& m_variables;
    SlcDefUse& m_defUse;
    SlcNumberLists m_blockUse;  // read before any write in the block
    SlcNumberLists m_blockDef;
    std::vector<Group> m_groups;
    std::vector<Place> m_places;     // by variable number
    std::vector<int> m_loopHeads;    // targets of back edges, in order
    std::vector<Group*> m_changing;  // changed groups whose range the walk has not left
    int m_visits = 0;                // number of blocks that solving visited
};

/// Tests whether a variable is live after an instruction, for a walk through a block from its last
/// instruction to its first.
class SlcLiveTest {
public:
    /// `analysis` must be up to date, and outlive this object.
    explicit SlcLiveTest(SlcDataflowAnalysis& analysis)
        : m_analysis(analysis),
          m_seen(analysis.Variables().Count())
    {
    }

    /// Starts after the last instruction of the block.
    void StartAtEndOf(int block) { m_block = block; }
    /// True if the variable is live at the current position.
    [[nodiscard]] bool IsLive(int variable) const;
    /// At the front of the block: true if the block reads the variable before any write.
    [[nodiscard]] bool IsReadFirst(int variable) const
    {
        return m_seen[variable].block == m_block && m_seen[variable].isLive;
    }
    /// Steps from the end of `code` to its front; its reads and writes are then in the analysis's
    /// `DefUse`.
    void StepOver(const SlcPtr<SlcICode>& code);
    /// Steps over an instruction with these reads and writes.
    void StepOver(std::span<const int> uses, std::span<const int> defs);

private:
    /// How a block accesses a variable after the current position.
    struct Seen {
        int block = -1;
        bool isLive = false;  // read before written
    };

    SlcDataflowAnalysis& m_analysis;
    std::vector<Seen> m_seen;  // by variable number
    int m_block = 0;
};
