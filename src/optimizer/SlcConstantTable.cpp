// An inner node has sixteen children, a leaf the constants of sixteen variables. A change copies
// the nodes from the root to one leaf and shares all others. Tables agree where they share a node,
// so a comparison visits only the differences.
//
//         root                 Set(17, c):   a new root and a new leaf [16..31];
//        /    \                              [0..15] belongs to both tables
//     [0..15] [16..31]
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcCopyPropagation, ...).

#include "optimizer/SlcConstantTable.h"

SlcConstantTable::SlcConstantTable(int count)
{
    while (((count - 1) >> ((m_levels + 1) * k_bits)) > 0)
        ++m_levels;
}

SlcOperand SlcConstantTable::Find(int variable) const
{
    const SlcPtr<Node>* node = &m_root;
    for (int level = m_levels; level > 0 && !node->Null(); --level)
        node = &static_cast<const Inner&>(**node).children[Branch(level, variable)];
    if (node->Null())
        return nullptr;
    return static_cast<const Leaf&>(**node).constants[Branch(0, variable)];
}

void SlcConstantTable::Set(int variable, const SlcOperand& constant)
{
    if (!(Find(variable) == constant))
        m_root = With(m_root, m_levels, variable, constant);
}

SlcPtr<SlcConstantTable::Node> SlcConstantTable::With(const SlcPtr<Node>& node, int level,
                                                      int variable, const SlcOperand& constant)
{
    const int branch = Branch(level, variable);
    if (level == 0) {
        auto leaf = MakeShared<Leaf>();
        if (node)
            leaf->constants = static_cast<const Leaf&>(*node).constants;
        leaf->constants[branch] = constant;
        return leaf;
    }
    auto inner = MakeShared<Inner>();
    if (node)
        inner->children = static_cast<const Inner&>(*node).children;
    inner->children[branch] = With(inner->children[branch], level - 1, variable, constant);
    return inner;
}

SlcConstantTable SlcConstantTable::CommonBools(const SlcConstantTable& first,
                                               const SlcConstantTable& second)
{
    SlcConstantTable common = first;
    common.m_root = Common(first.m_root, second.m_root, first.m_levels);
    return common;
}

SlcPtr<SlcConstantTable::Node> SlcConstantTable::Common(const SlcPtr<Node>& first,
                                                        const SlcPtr<Node>& second, int level)
{
    if (first == second)
        return first;
    if (first.Null() || second.Null())
        return nullptr;
    if (level == 0) {
        auto leaf = MakeShared<Leaf>();
        for (int i = 0; i < k_branches; ++i) {
            const SlcOperand& a = static_cast<const Leaf&>(*first).constants[i];
            const SlcOperand& b = static_cast<const Leaf&>(*second).constants[i];
            if (a && b && a->GetBool() == b->GetBool())
                leaf->constants[i] = a;
        }
        return leaf;
    }
    auto inner = MakeShared<Inner>();
    for (int i = 0; i < k_branches; ++i)
        inner->children[i] = Common(static_cast<const Inner&>(*first).children[i],
                                    static_cast<const Inner&>(*second).children[i], level - 1);
    return inner;
}
