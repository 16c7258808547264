#include "optimizer/SlcReduceNumberTmps.h"

#include <algorithm>
#include <ostream>

#include "icode/SlcOperandWalker.h"

namespace {

/// Kinds of variables that can share storage: temp-uniform ones first, then varying ones, each
/// by type. The point kind serves the whole point family.
constexpr int k_typesPerDetail = 6;
constexpr int k_poolCount = 2 * k_typesPerDetail;

int TypeKind(const SlcTypeNode& type)
{
    if (type.IsBoolType())
        return 0;
    if (type.IsIntType())
        return 1;
    if (type.IsFloatType())
        return 2;
    if (type.IsStringType())
        return 3;
    if (type.IsColorType())
        return 4;
    return type.IsPointType() ? 5 : -1;
}

/// -1 for a variable that keeps its own storage.
int PoolOf(const SlcLexType& variable)
{
    const SlcTypeNode& type = *variable.GetType();
    const SlcDetailNode& detail = *variable.GetDetail();
    if (!variable.GetStorage()->IsLocal() || type.IsArrayType() || type.IsArrayRefType() ||
        type.IsMatrixType() || (detail.IsUniform() && !detail.IsTempUniform()))
        return -1;
    const int kind = TypeKind(type);
    if (kind < 0)
        return -1;
    return detail.IsTempUniform() ? kind : k_typesPerDetail + kind;
}

/// Puts the variables that stay in the place of those that they replace.
class RenameWalker : public SlcOperandWalker {
public:
    explicit RenameWalker(const std::vector<SlcOperand>& replacements)
        : m_replacements(replacements)
    {
    }

private:
    void Read(SlcOperand& operand) override { Replace(operand); }
    void Write(SlcOperand& operand) override { Replace(operand); }
    void ReadWrite(SlcOperand& operand) override { Replace(operand); }

    void Replace(SlcOperand& operand)
    {
        const int number = SlcVariableNumbers::Of(operand);
        if (number >= 0 && m_replacements[number])
            operand = m_replacements[number];
    }

    const std::vector<SlcOperand>& m_replacements;  // by number; null for what stays
};

}  // namespace

void SlcReduceNumberTmps::Reduce(SlcListICode& list, const SlcControlFlowGraph& graph,
                                 SlcDataflowAnalysis& analysis, std::ostream* dump)
{
    const SlcVariableNumbers& variables = analysis.Variables();
    m_nodes.assign(variables.Count(), {});
    for (int number = 0; number < variables.Count(); ++number)
        m_nodes[number].pool = PoolOf(*variables.Variable(number));
    CollectInterference(graph, analysis);
    Colour(variables);
    if (dump)
        PrintGraph(*dump, variables);
    Rename(list, variables);
}

void SlcReduceNumberTmps::AddEdge(int first, int second)
{
    if (first != second && m_nodes[first].pool == m_nodes[second].pool)
        m_nodes[std::max(first, second)].neighbors.push_back(std::min(first, second));
}

// Two variables that are alive at one point are either both alive back to the entry, or one of
// them is written on the way while the other is alive. So it is enough to look at the writes and
// at the entry, and not at each pair at each instruction.
void SlcReduceNumberTmps::CollectInterference(const SlcControlFlowGraph& graph,
                                              SlcDataflowAnalysis& analysis)
{
    if (graph.Blocks().empty())
        return;
    for (const int number : analysis.LiveIn(0))
        m_nodes[number].atEntry = true;
    SlcLiveWalk walk(analysis);
    SlcDefUse& defUse = analysis.DefUse();
    for (const auto& block : graph.Blocks()) {
        walk.StartAtEndOf(block.GetBlockId());
        const auto& codes = block.GetListICode();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            defUse.Compute(*code);
            for (const int defined : defUse.Defs()) {
                if (m_nodes[defined].pool == k_noPool)
                    continue;
                for (const int alive : walk.Live().Members())
                    AddEdge(defined, alive);
                for (const int other : defUse.Defs())
                    AddEdge(defined, other);
            }
            walk.StepOver(*code);
        }
    }
}

void SlcReduceNumberTmps::Colour(const SlcVariableNumbers& variables)
{
    m_pools.assign(k_poolCount, {});
    // Colors that some variable alive at the entry has: closed to all others alive there.
    std::vector<std::vector<bool>> takenAtEntry(k_poolCount);
    std::vector<std::vector<int>> takenFor(k_poolCount);  // by color, whose neighbor has it
    for (int number = 0; number < variables.Count(); ++number) {
        Node& node = m_nodes[number];
        if (node.pool == k_noPool)
            continue;
        auto& pool = m_pools[node.pool];
        auto& taken = takenFor[node.pool];
        auto& atEntry = takenAtEntry[node.pool];
        for (const int neighbor : node.neighbors)
            taken[m_nodes[neighbor].color] = number;
        int color = 0;
        const int colors = static_cast<int>(pool.size());
        while (color < colors && (taken[color] == number || (node.atEntry && atEntry[color])))
            ++color;
        if (color == colors) {
            pool.push_back(number);
            taken.push_back(-1);
            atEntry.push_back(false);
        }
        node.color = color;
        if (node.atEntry)
            atEntry[color] = true;
    }
}

void SlcReduceNumberTmps::Rename(SlcListICode& list, const SlcVariableNumbers& variables)
{
    std::vector<SlcOperand> replacements(variables.Count());
    std::deque<SlcOperand> declared;
    for (const auto& pool : m_pools)
        for (const int number : pool)
            declared.push_back(variables.Variable(number));
    for (int number = 0; number < variables.Count(); ++number) {
        const Node& node = m_nodes[number];
        if (node.pool != k_noPool)
            replacements[number] = variables.Variable(m_pools[node.pool][node.color]);
        else if (variables.Variable(number)->GetStorage()->IsLocal())
            declared.push_back(variables.Variable(number));
    }
    list.m_usedLocalVars.swap(declared);
    RenameWalker walker(replacements);
    for (const auto& code : list.m_icodes)
        walker.Visit(code);
}

void SlcReduceNumberTmps::PrintGraph(std::ostream& out, const SlcVariableNumbers& variables) const
{
    const auto nameOf = [&](int number) { return variables.Variable(number)->GetName(); };
    for (int number = 0; number < variables.Count(); ++number) {
        const Node& node = m_nodes[number];
        out << nameOf(number) << ": ";
        std::vector<int> neighbors = node.neighbors;
        std::sort(neighbors.begin(), neighbors.end());
        neighbors.erase(std::unique(neighbors.begin(), neighbors.end()), neighbors.end());
        for (const int neighbor : neighbors)
            out << nameOf(neighbor) << ' ';
        if (node.color >= 0)
            out << "(new var: " << nameOf(m_pools[node.pool][node.color]) << ')';
        out << '\n';
    }
}
