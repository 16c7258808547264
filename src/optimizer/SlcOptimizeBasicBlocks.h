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
/// The order within a round is a priority: removals run to exhaustion first, rewrites run only when
/// nothing is left to remove, loops after them, and variables are merged once, when the code has
/// become stable. Liveness is always that of the current code. A pass reports a change only if the
/// code has become smaller, a constant has replaced a variable, a simpler instruction another one,
/// a jump has been redirected past another, or an instruction has been hoisted, so the rounds
/// terminate.
class SlcOptimizeBasicBlocks : public SlcICodeOptimizer {
public:
    /// `options` must outlive the pass.
    explicit SlcOptimizeBasicBlocks(SlcOptionsControl& options);
    ~SlcOptimizeBasicBlocks() override;
    void Optimize(SlcPtr<SlcListICode>& list) override;

private:
    void Default(SlcPtr<SlcICode>) override {}

    /// Discards the graph, liveness and all knowledge about the code.
    void ForgetAll();
    /// Builds the graph of `list` if there is none. Liveness is computed on demand.
    void BuildGraph(SlcListICode& list);
    [[nodiscard]] SlcDataflowAnalysis& Liveness();
    /// Removes dead code or, if there is none, empty blocks.
    [[nodiscard]] bool EliminateCode(SlcListICode& list);
    [[nodiscard]] bool RemoveDeadCode(SlcListICode& list);
    [[nodiscard]] bool RemoveEmptyBlocks(SlcListICode& list);
    /// Rewrites the remaining code: propagates constants or, if that changes nothing, hoists code.
    [[nodiscard]] bool ChangeCode(SlcListICode& list);
    /// Constant propagation and folding in one walk, so that a chain of constants takes one round.
    [[nodiscard]] bool PropagateAndFold(SlcListICode& list);
    /// Updates the state after such a walk. `isSettled` means that another walk would find nothing,
    /// and that blocks and edges are unchanged.
    void NoteFolded(bool isSettled, std::span<const int> changedBlocks);
    /// Lets temporaries share storage. True if some instruction has become x = x.
    [[nodiscard]] bool UpdateVariables(SlcListICode& list);
    /// Writes the blocks to the file "blockicode.txt".
    void DumpBlocks() const;

    SlcOptionsControl& m_options;
    std::unique_ptr<SlcVariableNumbers> m_variables;
    std::unique_ptr<SlcDefUse> m_defUse;
    std::unique_ptr<SlcControlFlowGraph> m_graph;     // of the current code; null if stale
    std::unique_ptr<SlcDataflowAnalysis> m_analysis;  // of the graph; null until needed
    /// The searches that are known to find nothing.
    struct Clean {
        bool ofDeadCode = false;
        bool ofEmptyBlocks = false;
        bool ofConstants = false;  // propagation and folding
    };
    Clean m_isClean;
    bool m_hasKeptSeams = false;  // the last search for empty blocks kept adjacent runs apart
};
