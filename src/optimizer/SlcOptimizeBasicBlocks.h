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
/// The order within a round is a priority: removals run to exhaustion first, constants are
/// propagated and folded only when nothing is left to remove, code is hoisted out of loops after
/// that, and temporaries are merged once, when nothing else changes. A pass always gets the
/// liveness of the current code. A pass reports a change only if the code has become smaller, a
/// constant has replaced a variable, a simpler instruction another one, a jump has been redirected
/// past another, an instruction has been hoisted, or merging has made an x = x, so the rounds
/// terminate. Their number has a limit as well.
class SlcOptimizeBasicBlocks : public SlcICodeOptimizer {
public:
    /// `options` must outlive the pass.
    explicit SlcOptimizeBasicBlocks(SlcOptionsControl& options);
    ~SlcOptimizeBasicBlocks() override;
    void Optimize(SlcPtr<SlcListICode>& list) override;

private:
    void Default(SlcPtr<SlcICode>) override {}

    /// Discards the graph, liveness and `m_isClean`.
    void ForgetAll();
    /// Builds the graph of `list` if there is none, or, with the options for dumps and tests,
    /// always. Liveness is computed on demand.
    void BuildGraph(SlcListICode& list);
    [[nodiscard]] SlcDataflowAnalysis& Liveness();
    /// Removes dead code or, if there is none, empty blocks. This and the next four return true if
    /// the list has changed.
    [[nodiscard]] bool EliminateCode(SlcListICode& list);
    [[nodiscard]] bool RemoveDeadCode(SlcListICode& list);
    [[nodiscard]] bool RemoveEmptyBlocks(SlcListICode& list);
    /// Rewrites the remaining code: propagates and folds constants or, if that changes nothing,
    /// hoists code.
    [[nodiscard]] bool ChangeCode(SlcListICode& list);
    /// Constant propagation and folding in one walk, so that a chain of constants takes one round.
    [[nodiscard]] bool PropagateAndFold(SlcListICode& list);
    /// Updates the state after such a walk. `isSettled` means that another walk would find nothing,
    /// and that blocks and edges are unchanged. `changedBlocks` contain changed instructions.
    void NoteFolded(bool isSettled, std::span<const int> changedBlocks);
    /// Lets temporaries share storage. True if some instruction has become x = x.
    [[nodiscard]] bool UpdateVariables(SlcListICode& list);
    /// Writes the blocks to the file "blockicode.txt".
    void DumpBlocks() const;

    SlcOptionsControl& m_options;
    std::unique_ptr<SlcVariableNumbers> m_variables;
    std::unique_ptr<SlcDefUse> m_defUse;
    std::unique_ptr<SlcControlFlowGraph> m_graph;     // of the current code; null if stale
    std::unique_ptr<SlcDataflowAnalysis> m_analysis;  // of the graph; null until needed, and stale
                                                      // if there is no graph
    /// The searches that are known to find nothing.
    struct Clean {
        bool ofDeadCode = false;
        bool ofEmptyBlocks = false;
        bool ofConstants = false;  // propagation and folding
    };
    Clean m_isClean;
    /// The last search for empty blocks could not join two adjacent runs because of the uniform
    /// variables that they access.
    bool m_hasKeptSeams = false;
};
