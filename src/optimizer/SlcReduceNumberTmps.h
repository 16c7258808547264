#pragma once

#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"
#include "support/SlcText.h"

/// Merges locals of one type and detail that are never live together into one variable: varying
/// ones, since each costs storage for all shading points, and temp-uniform ones, which are stored
/// once for all points (`SlcConvertTmpVarDetail`). Points, vectors and normals count as one type.
///
/// Greedy colouring of the interference graph in the order of the variables, see `SlcRangeColors`:
/// the first variable of each color stays. The graph itself is built only for a dump, see
/// `SlcLiveRanges`.
/// Arrays, references, matrices and uniform variables are not merged.
class SlcReduceNumberTmps {
public:
    /// Renames operands in `list`, and sets its used locals to those that remain. `graph` and
    /// `analysis` must belong to `list`, and are stale afterwards. If `dump` is not null, the
    /// interference graph is printed there. True if a variable is now assigned to itself.
    bool Reduce(SlcListICode& list, const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis,
                SlcText* dump);

private:
    static constexpr int k_noPool = -1;

    struct Node {
        int pool = k_noPool;  // kind of the variable; `k_noPool` if it is never merged
        int color = -1;       // index in `m_pools[pool]` of the variable that stays
    };

    /// Computes the kind and the color of each variable.
    void Colour(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    /// Replaces all variables of a color by the first, also in the used locals of `list`. True if a
    /// variable is then assigned to itself.
    [[nodiscard]] bool Rename(SlcListICode& list, const SlcVariableNumbers& variables);
    void PrintGraph(SlcText& out, const SlcControlFlowGraph& graph,
                    SlcDataflowAnalysis& analysis) const;

    std::vector<Node> m_nodes;              // by variable number
    std::vector<std::vector<int>> m_pools;  // the variables that stay, by kind and color
};
