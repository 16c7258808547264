#pragma once

#include <cstdint>
#include <iosfwd>
#include <span>
#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"
#include "optimizer/SlcGraphCuts.h"
#include "optimizer/SlcNumberLists.h"

/// Live variables at the borders of each block.
///
/// Only the sets at block borders are held, and only for variables that are alive at one; a pass
/// that needs the sets of an instruction derives them with `SlcLiveTest`. The
/// variables are in groups of 64, and a group has one bit per variable and block for the range of
/// blocks that names its variables: after the range they are dead, and before it each is alive
/// throughout or nowhere. So a group costs the length of its range, and a long shader costs its
/// length times the number of variables that are alive all through it.
class SlcDataflowAnalysis {
public:
    /// Variables that are named in about the same range of blocks.
    struct Group {
        int first = 0;  // a cut of the code, as is the end
        int end = 0;
        bool isChanging = false;          // its sets are not solved again yet
        std::uint64_t aroundLoops = 0;    // alive at the target of some jump back
        std::vector<int> variables;       // at most 64, by bit
        std::vector<std::uint64_t> uses;  // by block from the first to the end, read before written
        std::vector<std::uint64_t> defs;  // written in the block
        std::vector<std::uint64_t> alive;   // at the front of the block
        std::vector<std::uint64_t> before;  // the same before the change

        /// The set at the front of a block.
        [[nodiscard]] std::uint64_t AliveAt(int block) const
        {
            return block >= end ? 0 : alive[block < first ? 0 : block - first];
        }
    };

    /// All three must outlive the analysis. As a side effect every followed variable that is not
    /// uniform gets the unknown detail, which the back ends take for varying.
    SlcDataflowAnalysis(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables,
                        SlcDefUse& defUse);

    /// Variables alive at the front and at the end of a block: some path from there reads the
    /// variable before it writes it. O(1), and O(successors).
    [[nodiscard]] bool IsLiveIn(int block, int variable) const;
    [[nodiscard]] bool IsLiveOut(int block, int variable) const;
    /// For passes that work on whole words of variables.
    [[nodiscard]] const std::vector<Group>& Groups() const { return m_groups; }
    /// Variables of a group that are alive at the end of a block of its stretch, as bits.
    [[nodiscard]] std::uint64_t LiveAfter(const Group& group, int block) const;

    // For a pass that removes code on a walk over the blocks against the code order.

    /// The variables that the block read before it wrote them when the analysis was made.
    [[nodiscard]] std::span<const int> ReadFirst(int block) const { return m_blockUse[block]; }
    /// Notes that the block no longer reads one of them.
    void ForgetRead(int block, int variable);
    /// Recomputes what is alive at the front of the block. The blocks after it must be up to date.
    /// Variables that were alive around a loop stay alive, so that the set may be too large.
    void RefreshFront(int block);

    /// Updates the analysis after a pass that has changed instructions of these blocks, so that
    /// they read and write less, and has kept the graph. `Print` and `ReadFirst` may still hold
    /// variables that are no longer read. True if a variable that was alive at the target of a jump
    /// back, when the analysis was made or last updated, no longer is.
    bool Update(std::span<const int> blocks);

    /// True if the variable was alive, when the analysis was made, at the target of a jump back.
    [[nodiscard]] bool GoesAroundLoop(int variable) const;

    /// What an instruction of the graph reads and writes. It must be as it was when the analysis
    /// was made.
    [[nodiscard]] SlcDefUse::Facts FactsOf(const SlcICode& code) const { return m_defUse.Of(code); }

    [[nodiscard]] const SlcVariableNumbers& Variables() const { return m_variables; }
    [[nodiscard]] SlcDefUse& DefUse() { return m_defUse; }

    /// The sets of each block, by name, as text. Not linear: it is made for people to read.
    void Print(std::ostream& out) const;

private:
    /// A variable that some block reads before it writes it.
    struct Followed {
        int variable = 0;
        int first = 0;  // its range
        int end = 0;
    };
    struct Place {
        int group = -1;  // none for a variable that is alive at no border
        int bit = 0;
    };

    /// The variables that each block reads before it writes them, and those that it writes.
    void CollectBlockSets();
    /// Those that may be alive at some border, with the range where they can be.
    [[nodiscard]] std::vector<Followed> FollowedVariables() const;
    /// Groups variables whose ranges overlap or follow closely, and solves each group.
    void MakeGroups(const std::vector<Followed>& followed);
    /// Enters what blocks use and define.
    void FillGroups();
    /// Enters again what a block uses and defines.
    void RefillGroups(int block);
    /// Keeps the sets of the group as they were, before the first change since it was solved.
    static void BeginChange(Group& group);
    /// The equations of liveness for the variables of a group, to their smallest solution.
    void Solve(Group& group);
    [[nodiscard]] bool HasChangedAtLoops(const Group& group) const;
    /// Records which variables are alive around loops.
    void LookAtLoops(Group& group) const;
    /// Recomputes the set at the front of the block from the one at its end. True if it changed.
    [[nodiscard]] bool UpdateFront(Group& group, int block) const;
    void PrintNames(std::ostream& out, const char* title, std::vector<int> numbers) const;

    const SlcControlFlowGraph& m_graph;
    const SlcVariableNumbers& m_variables;
    SlcDefUse& m_defUse;
    SlcNumberLists m_blockUse;  // read before any write in the block
    SlcNumberLists m_blockDef;
    std::vector<Group> m_groups;
    std::vector<Place> m_places;     // by variable number
    std::vector<int> m_loopHeads;    // targets of jumps back, in order
    std::vector<Group*> m_changing;  // whose range the walk has not left
    int m_visits = 0;                // blocks that the solution took
};

/// Whether a variable is alive after an instruction, for a walk through a block from its last
/// instruction to its first.
class SlcLiveTest {
public:
    /// `analysis` must be up to date, and outlive it.
    explicit SlcLiveTest(SlcDataflowAnalysis& analysis)
        : m_analysis(analysis),
          m_seen(analysis.Variables().Count())
    {
    }

    /// Nothing of the block has been stepped over.
    void StartAtEndOf(int block) { m_block = block; }
    /// After the current instruction.
    [[nodiscard]] bool IsLive(int variable) const;
    /// True at the front of the block if it reads the variable before any write.
    [[nodiscard]] bool IsReadFirst(int variable) const
    {
        return m_seen[variable].block == m_block && m_seen[variable].alive;
    }
    /// Steps to the front of `code`; its reads and writes are in `DefUse` of the analysis then.
    void StepOver(const SlcPtr<SlcICode>& code);
    /// The same for an instruction by what it reads and writes.
    void StepOver(std::span<const int> uses, std::span<const int> defs);

private:
    /// How the part of a block after the current instruction uses a variable.
    struct Seen {
        int block = -1;
        bool alive = false;
    };

    SlcDataflowAnalysis& m_analysis;
    std::vector<Seen> m_seen;  // by variable number
    int m_block = 0;
};
