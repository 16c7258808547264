#pragma once

#include <iosfwd>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"

/// Gives varying locals that are never alive together one common variable, since every varying
/// local costs storage for all shading points.
///
/// Greedy colouring of the interference graph in the order of the variables, see `SlcRangeColors`:
/// the first variable of each color stays. The graph itself is never made, see `SlcLiveRanges`.
/// Arrays, references, matrices and uniform variables keep their own.
class SlcReduceNumberTmps {
public:
    /// Renames operands in `list` and leaves in its used locals what is still named. `graph` and
    /// `analysis` belong to `list`, and are stale afterwards. If `dump` is not null, the
    /// interference graph goes there as text.
    void Reduce(SlcListICode& list, const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis,
                std::ostream* dump);

private:
    static constexpr int k_noPool = -1;

    struct Node {
        int pool = k_noPool;  // kind of the variable; none for what is never shared
        int color = -1;       // place in the pool of what replaces the variable
    };

    /// Finds the kind and the color of each variable.
    void Colour(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    /// Puts the first variable of each color in the place of the others.
    void Rename(SlcListICode& list, const SlcVariableNumbers& variables);
    void PrintGraph(std::ostream& out, const SlcControlFlowGraph& graph,
                    SlcDataflowAnalysis& analysis) const;

    std::vector<Node> m_nodes;              // by variable number
    std::vector<std::vector<int>> m_pools;  // the variables that stay, by kind and color
};
