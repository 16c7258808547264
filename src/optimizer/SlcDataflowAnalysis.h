#pragma once

#include <iosfwd>
#include <vector>

#include "optimizer/SlcControlFlowGraph.h"
#include "optimizer/SlcDefUse.h"
#include "optimizer/SlcSparseSet.h"

/// Live variables at the borders of each block.
///
/// Only the sets at block borders are held, as sorted lists of the variables that really are
/// alive there; a pass that needs the sets of an instruction derives them with `SlcLiveWalk`.
/// Each variable is followed upward from its reads to its writes (Andrew Appel and Jens Palsberg,
/// "Modern Compiler Implementation in Java", 2nd edition, section 19.6), so the cost is the size
/// of the result.
class SlcDataflowAnalysis {
public:
    /// All three must outlive the analysis. As a side effect every followed variable that is not
    /// uniform gets the unknown detail, which the back ends take for varying.
    SlcDataflowAnalysis(const SlcControlFlowGraph& graph, const SlcVariableNumbers& variables,
                        SlcDefUse& defUse);

    /// Rising numbers.
    [[nodiscard]] const std::vector<int>& LiveIn(int block) const { return m_liveIn[block]; }
    [[nodiscard]] const std::vector<int>& LiveOut(int block) const { return m_liveOut[block]; }
    [[nodiscard]] const SlcVariableNumbers& Variables() const { return m_variables; }
    [[nodiscard]] SlcDefUse& DefUse() { return m_defUse; }

    /// The sets of each block, by name, as text.
    void Print(std::ostream& out) const;

private:
    void CollectBlockSets();
    void FollowVariables();
    void PrintNames(std::ostream& out, const char* title, const std::vector<int>& numbers) const;

    const SlcControlFlowGraph& m_graph;
    const SlcVariableNumbers& m_variables;
    SlcDefUse& m_defUse;
    std::vector<std::vector<int>> m_blockUse;  // read before any write in the block
    std::vector<std::vector<int>> m_blockDef;
    std::vector<std::vector<int>> m_liveIn;
    std::vector<std::vector<int>> m_liveOut;
};

/// The variables alive behind an instruction, for a walk through a block from its last
/// instruction to its first.
class SlcLiveWalk {
public:
    explicit SlcLiveWalk(SlcDataflowAnalysis& analysis)
        : m_analysis(analysis),
          m_live(analysis.Variables().Count())
    {
    }

    /// Starts at the end of a block. Linear in what is alive there.
    void StartAtEndOf(int block);
    /// What is alive behind the instruction at hand.
    [[nodiscard]] const SlcSparseSet& Live() const { return m_live; }
    /// Steps to the front of `code`; its reads and writes are in `DefUse` of the analysis then.
    void StepOver(const SlcPtr<SlcICode>& code);

private:
    SlcDataflowAnalysis& m_analysis;
    SlcSparseSet m_live;
};
