#pragma once

#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "support/SlcText.h"

/// Merges varying or temp-uniform locals that are never live together into one variable, since
/// every varying local costs storage for all shading points.
///
/// Greedy colouring of the interference graph in the order of the variables, see `SlcRangeColors`:
/// the first variable of each color stays. The graph itself is never built, see `SlcLiveRanges`.
/// Arrays, references, matrices and uniform variables are not merged.
class SlcReduceNumberTmps {
public:
    /// Renames operands in `list` and removes the merged variables from its used locals.
    /// `graph` and `analysis` must belong to `list`, and are stale afterwards. If `dump` is not
    /// null, the interference graph is printed there. True if a variable is now assigned to itself.
    bool Reduce(SlcListICode& list, const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis,
                SlcText* dump);

private:
    static constexpr int k_noPool = -1;

    struct Node {
        int pool = k_noPool;  // kind of the variable; `k_noPool` if it is never merged
        int color = -1;       // index in the pool of the variable that replaces it
    };

    /// Computes the kind and the color of each variable.
    void Colour(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    /// Replaces all variables of a color by the first; true if one is then assigned to itself.
    [[nodiscard]] bool Rename(SlcListICode& list, const SlcVariableNumbers& variables);
    void PrintGraph(SlcText& out, const SlcControlFlowGraph& graph,
                    SlcDataflowAnalysis& analysis) const;

    std::vector<Node> m_nodes;              // by variable number
    std::vector<std::vector<int>> m_pools;  // the variables that stay, by kind and color
};
