// Shares storage between locals that are never live together.
//
//     x = p; Ci = x; y = p + 1; Oi = y          becomes          x = p; Ci = x; x = p + 1; Oi = x
//
// Each kind of variable (by type and detail) is coloured separately and greedily. Variables are
// visited in the order in which the lowering made them, which is close to the order in which they
// become live; if each had only one range, the order of the starts would be optimal. The first
// variable that gets a color stays, and all others of the color are renamed to it.
//
// Instructions with several results need no special treatment: the range of a result contains its
// write even if it is never read (SlcLiveRanges), so the result interferes with the others.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcReduceNumberTmps, ...), and
// SlcDataflowAnalysisTest.cpp on random code.

#include "optimizer/SlcReduceNumberTmps.h"

#include <set>

#include "icode/SlcAssignICode.h"
#include "icode/SlcOperandWalker.h"
#include "optimizer/SlcLiveRanges.h"
#include "optimizer/SlcRangeColors.h"

namespace {

/// Variables of one kind can share storage. There is a kind for each type of temp-uniform
/// variables, and then one for each type of varying variables. Points, vectors and normals are one
/// kind.
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

/// True for a variable that is varying or temp-uniform, and no array or reference. The dump lists
/// the interferences of such variables; only some of them are merged, see `PoolOf`.
bool MayShare(const SlcLexType& variable)
{
    const SlcTypeNode& type = *variable.GetType();
    const SlcDetailNode& detail = *variable.GetDetail();
    return !type.IsArrayType() && !type.IsArrayRefType() &&
           (!detail.IsUniform() || detail.IsTempUniform());
}

/// Returns the kind of a variable; -1 if it keeps its own storage.
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

/// Replaces merged variables by those that stay.
class RenameWalker : public SlcOperandWalker {
public:
    explicit RenameWalker(const std::vector<SlcOperand>& replacements)
        : m_replacements(replacements)
    {
    }

    [[nodiscard]] bool AssignsToItself() const { return m_assignsToItself; }

private:
    using SlcOperandWalker::Case;
    void Case(SlcPtr<SlcAssignICode> code) override
    {
        SlcOperandWalker::Case(code);
        m_assignsToItself = m_assignsToItself || code->m_dest == code->m_source;
    }
    void Read(SlcOperand& operand) override { Replace(operand); }
    void Write(SlcOperand& operand) override { Replace(operand); }
    void ReadWrite(SlcOperand& operand) override { Replace(operand); }

    void Replace(SlcOperand& operand)
    {
        const int number = SlcVariableNumbers::Of(operand);
        if (number >= 0 && m_replacements[number])
            operand = m_replacements[number];
    }

    const std::vector<SlcOperand>& m_replacements;  // by number; null for those without a kind
    bool m_assignsToItself = false;
};

}  // namespace

bool SlcReduceNumberTmps::Reduce(SlcListICode& list, const SlcControlFlowGraph& graph,
                                 SlcDataflowAnalysis& analysis, SlcText* dump)
{
    Colour(graph, analysis);
    if (dump)
        PrintGraph(*dump, graph, analysis);
    return Rename(list, analysis.Variables());
}

void SlcReduceNumberTmps::Colour(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis)
{
    const SlcVariableNumbers& variables = analysis.Variables();
    SlcLiveRanges ranges(graph, analysis);
    std::vector<SlcRangeColors> colors(k_poolCount);
    m_nodes.assign(variables.Count(), {});
    m_pools.assign(k_poolCount, {});
    for (int number = 0; number < variables.Count(); ++number) {
        Node& node = m_nodes[number];
        node.pool = PoolOf(*variables.Variable(number));
        if (node.pool == k_noPool)
            continue;
        node.color = colors[node.pool].Take(ranges.Take(number));
        if (node.color == static_cast<int>(m_pools[node.pool].size()))
            m_pools[node.pool].push_back(number);
    }
}

bool SlcReduceNumberTmps::Rename(SlcListICode& list, const SlcVariableNumbers& variables)
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
    return walker.AssignsToItself();
}

// Prints the interferences with variables of all kinds, although the colouring needs only those
// within each kind.
void SlcReduceNumberTmps::PrintGraph(SlcText& out, const SlcControlFlowGraph& graph,
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
