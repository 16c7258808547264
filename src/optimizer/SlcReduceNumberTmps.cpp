#include "optimizer/SlcReduceNumberTmps.h"

#include <algorithm>
#include <ostream>
#include <set>

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

/// Interference counts for it.
bool MayShare(const SlcLexType& variable)
{
    const SlcTypeNode& type = *variable.GetType();
    const SlcDetailNode& detail = *variable.GetDetail();
    return !type.IsArrayType() && !type.IsArrayRefType() &&
           (!detail.IsUniform() || detail.IsTempUniform());
}

/// -1 for a variable that keeps its own storage.
int PoolOf(const SlcLexType& variable)
{
    const SlcTypeNode& type = *variable.GetType();
    const SlcDetailNode& detail = *variable.GetDetail();
    if (!variable.GetStorage()->IsLocal() || !MayShare(variable) || type.IsMatrixType())
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
        PrintGraph(*dump, graph, analysis);
    Rename(list, variables);
}

void SlcReduceNumberTmps::AddEdge(int first, int second)
{
    if (first != second && m_nodes[first].pool == m_nodes[second].pool)
        m_nodes[std::max(first, second)].neighbors.push_back(std::min(first, second));
}

// Two variables that are alive at one point are either both alive back to the entry, or one of
// them is written on the way while the other is alive. So it is enough to look at the writes and
// at the entry, and not at each pair at each instruction. What is alive in front of a block all the
// way back to the entry meets all that is written there, without an edge for each.
void SlcReduceNumberTmps::CollectInterference(const SlcControlFlowGraph& graph,
                                              SlcDataflowAnalysis& analysis)
{
    if (graph.Blocks().empty())
        return;
    for (int number = 0; number < analysis.Variables().Count(); ++number) {
        m_nodes[number].atEntry = analysis.IsLiveIn(0, number);
        m_nodes[number].aliveInFrontOf = analysis.AliveInFrontOf(number);
    }
    SlcLiveWalk walk(analysis);
    SlcDefUse& defUse = analysis.DefUse();
    for (const auto& block : graph.Blocks()) {
        walk.StartAtEndOf(block.GetBlockId());
        const auto& codes = block.GetListICode();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            defUse.Compute(*code);
            for (const int defined : defUse.Defs()) {
                Node& node = m_nodes[defined];
                if (node.pool == k_noPool)
                    continue;
                node.firstDef = std::min(node.firstDef, block.GetBlockId());
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
    std::vector<std::vector<Color>> colorsOf(k_poolCount);
    for (int number = 0; number < variables.Count(); ++number) {
        Node& node = m_nodes[number];
        if (node.pool == k_noPool)
            continue;
        auto& colors = colorsOf[node.pool];
        for (const int neighbor : node.neighbors)
            colors[m_nodes[neighbor].color].takenFor = number;
        const auto found = std::find_if(colors.begin(), colors.end(), [&](const Color& color) {
            return IsFree(node, color, number);
        });
        node.color = static_cast<int>(found - colors.begin());
        if (found == colors.end()) {
            m_pools[node.pool].push_back(number);
            colors.emplace_back();
        }
        Color& color = colors[node.color];
        color.atEntry |= node.atEntry;
        color.firstDef = std::min(color.firstDef, node.firstDef);
        color.aliveInFrontOf = std::max(color.aliveInFrontOf, node.aliveInFrontOf);
    }
}

bool SlcReduceNumberTmps::IsFree(const Node& node, const Color& color, int number)
{
    return color.takenFor != number && !(node.atEntry && color.atEntry) &&
           node.firstDef >= color.aliveInFrontOf && color.firstDef >= node.aliveInFrontOf;
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

// Shows the whole graph, of which the colouring needs but a part.
void SlcReduceNumberTmps::PrintGraph(std::ostream& out, const SlcControlFlowGraph& graph,
                                     SlcDataflowAnalysis& analysis) const
{
    const SlcVariableNumbers& variables = analysis.Variables();
    const auto nameOf = [&](int number) { return variables.Variable(number)->GetName(); };
    std::vector<std::set<int>> neighbors(variables.Count());
    SlcLiveTest live(analysis);
    for (const auto& block : graph.Blocks()) {
        live.StartAtEndOf(block.GetBlockId());
        const auto& codes = block.GetListICode();
        for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
            analysis.DefUse().Compute(*code);
            std::set<int> together(analysis.DefUse().Defs().begin(),
                                   analysis.DefUse().Defs().end());
            for (int number = 0; number < variables.Count(); ++number)
                if (live.IsLive(number))
                    together.insert(number);
            for (const int number : together)
                if (MayShare(*variables.Variable(number)))
                    neighbors[number].insert(together.begin(), together.end());
            live.StepOver(*code);
        }
    }
    for (int number = 0; number < variables.Count(); ++number) {
        const Node& node = m_nodes[number];
        out << nameOf(number) << ": ";
        for (const int neighbor : neighbors[number])
            out << nameOf(neighbor) << ' ';
        const int stays = node.pool == k_noPool ? number : m_pools[node.pool][node.color];
        out << "(new var: " << nameOf(stays) << ")\n";
    }
}
