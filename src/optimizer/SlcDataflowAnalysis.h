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
/// variables go in groups of 64, each of which holds one bit a variable for the stretch of code
/// that names its variables: after the stretch they are dead, and before it each is alive
/// throughout or nowhere. So a group costs the length of its stretch, and long shaders cost their
/// length, times how many variables are alive all through them.
class SlcDataflowAnalysis {
public:
    /// Variables that are named in about the same stretch of code.
    struct Group {
        int first = 0;  // a cut of the code, as is the end
        int end = 0;
        bool touched = false;             // some read is forgotten, or a block was updated
        std::uint64_t aroundLoops = 0;    // alive where some jump back leads
        std::vector<int> variables;       // at most 64, by bit
        std::vector<std::uint64_t> uses;  // by block from the first to the end, read before written
        std::vector<std::uint64_t> defs;  // written in the block
        std::vector<std::uint64_t> alive;   // at the front of the block
        std::vector<std::uint64_t> before;  // the same before the group was touched

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
    [[nodiscard]] std::uint64_t AliveBehind(const Group& group, int block) const;

    /// For a pass that removes code on a walk over the blocks against the code order: the variables
    /// that the block read before it wrote them when the analysis was made,
    [[nodiscard]] std::span<const int> ReadFirst(int block) const { return m_blockUse[block]; }
    /// one of them that it reads no more,
    void ForgetRead(int block, int variable);
    /// and what is then alive at its front. Blocks further down must be up to date; what comes
    /// around a loop stays as it was, and so may be too much.
    void RefreshFront(int block);

    /// After a pass that has changed instructions of these blocks such that they read less and
    /// write less, while the graph has stayed: brings everything up to date, but for `Print` and
    /// `ReadFirst`, which may hold variables that are no longer read. True if something is no
    /// longer alive where it came around a loop when the analysis was made or last updated.
    bool Update(std::span<const int> blocks);

    /// The variable was alive, when the analysis was made, where some jump back leads.
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
        int first = 0;  // its stretch
        int end = 0;
    };
    struct Place {
        int group = -1;  // none for a variable that is alive at no border
        int bit = 0;
    };

    /// The variables that each block reads before it writes them, and those that it writes.
    void CollectBlockSets();
    /// Those that may be alive at some border, with the stretch where they can be.
    [[nodiscard]] std::vector<Followed> FollowedVariables() const;
    /// Groups variables by stretches that lie together, and solves each group.
    void MakeGroups(const std::vector<Followed>& followed);
    /// Enters what blocks use and define.
    void FillGroups();
    /// Reads again what a block uses and defines.
    void RefillGroups(int block);
    void Touch(Group& group);
    /// The equations of liveness for the variables of a group, to their smallest solution.
    void Solve(Group& group);
    [[nodiscard]] bool HasChangedAtLoops(const Group& group) const;
    /// Notes which variables go around loops.
    void LookAtLoops(Group& group) const;
    /// True if that changed.
    /// Recomputes the set at the front of the block from the one at its end.
    [[nodiscard]] bool UpdateFront(Group& group, int block) const;
    void PrintNames(std::ostream& out, const char* title, std::vector<int> numbers) const;

    const SlcControlFlowGraph& m_graph;
    const SlcVariableNumbers& m_variables;
    SlcDefUse& m_defUse;
    SlcNumberLists m_blockUse;  // read before any write in the block
    SlcNumberLists m_blockDef;
    std::vector<Group> m_groups;
    std::vector<Place> m_places;    // by variable number
    std::vector<int> m_loopHeads;   // blocks where jumps back lead, in order
    std::vector<Group*> m_touched;  // whose stretch the walk has not left
    int m_visits = 0;               // blocks that the solution took
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
