#pragma once

#include <memory>
#include <span>

#include "optimizer/SlcICodeOptimizer.h"

class SlcControlFlowGraph;
class SlcDataflowAnalysis;
class SlcDefUse;
class SlcVariableNumbers;

/// Runs the passes that need the control-flow graph until nothing changes.
///
/// The order within a round is a priority: removals run to exhaustion first, rewrites come only
/// when nothing is left to remove, loops after them, and variables are shared once, when the code
/// has become stable. Each pass sees the liveness of the code that it is given.
/// Every pass reports a change only if the code has become smaller, a constant has replaced a
/// variable, or an instruction has left a loop, so the rounds end.
class SlcOptimizeBasicBlocks : public SlcICodeOptimizer {
public:
    /// `options` must outlive the pass.
    explicit SlcOptimizeBasicBlocks(SlcOptionsControl& options);
    ~SlcOptimizeBasicBlocks() override;
    void Optimize(SlcPtr<SlcListICode>& list) override;

private:
    void Default(SlcPtr<SlcICode>) override {}

    /// Discards graph, liveness and what is known of the code.
    void ForgetAll();
    /// Builds the graph of `list` if there is none. Liveness is computed when a pass asks for it.
    void BuildGraph(SlcListICode& list);
    [[nodiscard]] SlcDataflowAnalysis& Liveness();
    /// Removes dead code or, if there is none, empty blocks.
    [[nodiscard]] bool EliminateCode(SlcListICode& list);
    [[nodiscard]] bool RemoveDeadCode(SlcListICode& list);
    [[nodiscard]] bool RemoveEmptyBlocks(SlcListICode& list);
    /// Rewrites what is left: constants first, or else loops.
    [[nodiscard]] bool ChangeCode(SlcListICode& list);
    /// Constant propagation and folding in one walk, so that a chain of constants takes one round.
    [[nodiscard]] bool PropagateAndFold(SlcListICode& list);
    /// Updates what is known after such a walk. `isSettled`: another walk would find nothing, and
    /// blocks and edges are unchanged.
    void NoteFolded(bool isSettled, std::span<const int> changedBlocks);
    /// Lets varying variables share storage; true if some instruction is x = x now.
    [[nodiscard]] bool UpdateVariables(SlcListICode& list);
    /// Into the file "blockicode.txt".
    void DumpBlocks() const;

    SlcOptionsControl& m_options;
    std::unique_ptr<SlcVariableNumbers> m_variables;
    std::unique_ptr<SlcDefUse> m_defUse;
    std::unique_ptr<SlcControlFlowGraph> m_graph;     // of the current code; null if stale
    std::unique_ptr<SlcDataflowAnalysis> m_analysis;  // of the graph; null before a pass needs it
    /// The searches that would find nothing.
    struct Clean {
        bool ofDeadCode = false;
        bool ofEmptyBlocks = false;
        bool ofConstants = false;  // that could be propagated or folded
    };
    Clean m_isClean;
    bool m_hasKeptSeams = false;  // of the last search for empty blocks
};
