#pragma once

#include <array>

#include "icode/SlcLexType.h"

/// The constants that variables are known to hold, by variable number. Copying costs O(1) and a
/// change O(log n), since copies share what they have in common: each block keeps the table as it
/// stood at its end.
///
/// A persistent radix tree, whose nodes never change once they are made (James Driscoll, Neil
/// Sarnak, Daniel Sleator and Robert Tarjan, "Making data structures persistent", 1989).
class SlcConstantTable {
public:
    /// For the numbers below `count`.
    explicit SlcConstantTable(int count);

    /// Null if nothing is known.
    [[nodiscard]] SlcOperand Find(int variable) const;
    /// Null forgets what was known.
    void Set(int variable, const SlcOperand& constant);
    /// The bool constants that both tables, of one size, know alike. Linear in the differences of
    /// the two.
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

    /// The way to a variable at a level of inner nodes; at level 0 its place in the leaf.
    [[nodiscard]] static int Branch(int level, int variable)
    {
        return (variable >> (level * k_bits)) & (k_branches - 1);
    }
    /// `node` with one constant changed, as a new node; a null node has none.
    [[nodiscard]] static SlcPtr<Node> With(const SlcPtr<Node>& node, int level, int variable,
                                           const SlcOperand& constant);
    /// What both have alike; the node itself where they share it.
    [[nodiscard]] static SlcPtr<Node> Common(const SlcPtr<Node>& first, const SlcPtr<Node>& second,
                                             int level);

    SlcPtr<Node> m_root;
    int m_levels = 0;  // of inner nodes above the leaves
};
