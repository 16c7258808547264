#pragma once

#include <array>

#include "icode/SlcLexType.h"

/// The known constant values of variables, by variable number. Constant propagation keeps a copy of
/// the table for the end of each block, so copying costs O(1), and copies share their common parts.
/// A change costs O(log n).
///
/// A persistent radix tree, whose nodes never change once they are made (James Driscoll, Neil
/// Sarnak, Daniel Sleator and Robert Tarjan, "Making data structures persistent", 1989).
class SlcConstantTable {
public:
    /// Makes an empty table for the numbers below `count`.
    explicit SlcConstantTable(int count);

    /// Returns the known value of a variable; null if there is none.
    [[nodiscard]] SlcOperand Find(int variable) const;
    /// Sets the known value of a variable; null removes it.
    void Set(int variable, const SlcOperand& constant);
    /// Returns the constants on which both tables agree. Both must have the same size and contain
    /// only bools. Costs O(log n) for each difference.
    [[nodiscard]] static SlcConstantTable CommonBools(const SlcConstantTable& first,
                                                      const SlcConstantTable& second);

private:
    static constexpr int k_bits = 4;
    static constexpr int k_branches = 1 << k_bits;

    struct Node : SlcCollectable {};
    struct Inner : Node {
        std::array<SlcPtr<Node>, k_branches> children;
    };
    struct Leaf : Node {
        std::array<SlcOperand, k_branches> constants;
    };

    /// Returns the branch to a variable at a level of inner nodes; at level 0 its index in the
    /// leaf.
    [[nodiscard]] static int Branch(int level, int variable)
    {
        return (variable >> (level * k_bits)) & (k_branches - 1);
    }
    /// Returns a copy of `node` with one constant changed; a null node is empty.
    [[nodiscard]] static SlcPtr<Node> With(const SlcPtr<Node>& node, int level, int variable,
                                           const SlcOperand& constant);
    /// Returns the entries on which both agree; the same node if they share it.
    [[nodiscard]] static SlcPtr<Node> Common(const SlcPtr<Node>& first, const SlcPtr<Node>& second,
                                             int level);

    SlcPtr<Node> m_root;
    int m_levels = 0;  // number of levels of inner nodes above the leaves
};
