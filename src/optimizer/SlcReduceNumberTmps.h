#pragma once

#include <iosfwd>
#include <limits>
#include <vector>

#include "optimizer/SlcDataflowAnalysis.h"

/// Gives varying locals that are never alive together one common variable, since every varying
/// local costs storage for all shading points.
///
/// Greedy colouring of the interference graph in the order of the variables (Gregory Chaitin and
/// others, "Register allocation via coloring", 1981, without spilling): the first variable of
/// each color stays. Variables interfere if one is written where the other is alive. Arrays,
/// references, matrices and uniform variables keep their own.
class SlcReduceNumberTmps {
public:
    /// Renames operands in `list` and leaves in its used locals what is still named. `graph` and
    /// `analysis` belong to `list`, and are stale afterwards. If `dump` is not null, the
    /// interference graph goes there as text.
    void Reduce(SlcListICode& list, const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis,
                std::ostream* dump);

private:
    static constexpr int k_noPool = -1;
    static constexpr int k_never = std::numeric_limits<int>::max();

    struct Node {
        int pool = k_noPool;         // kind of the variable; none for what is never shared
        bool atEntry = false;        // alive at the entry, as are all others so marked
        int firstDef = k_never;      // block of the first write
        int aliveInFrontOf = 0;      // alive in all blocks before that one
        std::vector<int> neighbors;  // with a lower number, from other blocks; may repeat one
        int color = -1;              // place in the pool of what replaces the variable
    };
    /// What all variables of one color bar others from.
    struct Color {
        int takenFor = -1;  // the variable at hand, if it has a neighbor of this color
        bool atEntry = false;
        int firstDef = k_never;
        int aliveInFrontOf = 0;
    };

    void CollectInterference(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis);
    void AddEdge(int first, int second);
    void Colour(const SlcVariableNumbers& variables);
    void Rename(SlcListICode& list, const SlcVariableNumbers& variables);
    void PrintGraph(std::ostream& out, const SlcControlFlowGraph& graph,
                    SlcDataflowAnalysis& analysis) const;
    [[nodiscard]] static bool IsFree(const Node& node, const Color& color, int number);

    std::vector<Node> m_nodes;              // by variable number
    std::vector<std::vector<int>> m_pools;  // the variables that stay, by kind and color
};
