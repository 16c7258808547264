#include "optimizer/SlcDataflowAnalysis.h"

#include <ostream>

namespace {

/// A mark for each block that is valid for one variable at a time, so that none is ever cleared.
class BlockMarks {
public:
    explicit BlockMarks(std::size_t blocks) : m_marks(blocks, -1) {}
    [[nodiscard]] bool Is(int block, int variable) const { return m_marks[block] == variable; }
    void Set(int block, int variable) { m_marks[block] = variable; }

private:
    std::vector<int> m_marks;
};

/// For each variable the blocks whose list of variables names it.
std::vector<std::vector<int>> BlocksByVariable(const std::vector<std::vector<int>>& variables,
                                               int count)
{
    std::vector<std::vector<int>> blocks(count);
    for (std::size_t block = 0; block < variables.size(); ++block)
        for (const int variable : variables[block])
            blocks[variable].push_back(static_cast<int>(block));
    return blocks;
}

}  // namespace

SlcDataflowAnalysis::SlcDataflowAnalysis(const SlcControlFlowGraph& graph,
                                         const SlcVariableNumbers& variables, SlcDefUse& defUse)
    : m_graph(graph),
      m_variables(variables),
      m_defUse(defUse),
      m_blockUse(graph.Blocks().size()),
      m_blockDef(graph.Blocks().size()),
      m_liveIn(graph.Blocks().size()),
      m_liveOut(graph.Blocks().size())
{
    CollectBlockSets();
    FollowVariables();
}

void SlcDataflowAnalysis::CollectBlockSets()
{
    SlcSparseSet used(m_variables.Count());
    SlcSparseSet defined(m_variables.Count());
    const auto forgetPlace = [this](int number) {
        const SlcOperand& variable = m_variables.Variable(number);
        if (!variable->IsUniform())
            variable->SetDetail(SlcDetailNode::AUnknown());
    };
    for (const auto& block : m_graph.Blocks()) {
        for (const auto& code : block.GetListICode()) {
            m_defUse.Compute(code);
            for (const int number : m_defUse.Uses()) {
                forgetPlace(number);
                if (!defined.Contains(number))
                    used.Insert(number);
            }
            for (const int number : m_defUse.Defs()) {
                forgetPlace(number);
                defined.Insert(number);
            }
        }
        m_blockUse[block.GetBlockId()] = used.Members();
        m_blockDef[block.GetBlockId()] = defined.Members();
        used.Clear();
        defined.Clear();
    }
}

void SlcDataflowAnalysis::FollowVariables()
{
    const auto& blocks = m_graph.Blocks();
    const auto usingBlocks = BlocksByVariable(m_blockUse, m_variables.Count());
    const auto definingBlocks = BlocksByVariable(m_blockDef, m_variables.Count());
    BlockMarks defines(blocks.size());
    BlockMarks aliveIn(blocks.size());
    BlockMarks aliveOut(blocks.size());
    std::vector<int> pending;  // blocks at whose front the variable is alive

    for (int variable = 0; variable < m_variables.Count(); ++variable) {
        for (const int block : definingBlocks[variable])
            defines.Set(block, variable);
        const auto enter = [&](int block) {
            if (aliveIn.Is(block, variable))
                return;
            aliveIn.Set(block, variable);
            m_liveIn[block].push_back(variable);
            pending.push_back(block);
        };
        for (const int block : usingBlocks[variable])
            enter(block);
        while (!pending.empty()) {
            const int block = pending.back();
            pending.pop_back();
            for (const int predecessor : blocks[block].GetPredBlocks()) {
                if (aliveOut.Is(predecessor, variable))
                    continue;
                aliveOut.Set(predecessor, variable);
                m_liveOut[predecessor].push_back(variable);
                if (!defines.Is(predecessor, variable))
                    enter(predecessor);
            }
        }
    }
}

void SlcDataflowAnalysis::PrintNames(std::ostream& out, const char* title,
                                     const std::vector<int>& numbers) const
{
    out << title;
    for (const int number : numbers)
        out << m_variables.Variable(number)->GetName() << ' ';
    out << '\n';
}

void SlcDataflowAnalysis::Print(std::ostream& out) const
{
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        out << "Block " << id << '\n';
        PrintNames(out, "   Def Vars: ", m_blockDef[id]);
        PrintNames(out, "   Use Vars: ", m_blockUse[id]);
        PrintNames(out, "   In Vars: ", m_liveIn[id]);
        PrintNames(out, "   Out Vars: ", m_liveOut[id]);
    }
}

void SlcLiveWalk::StartAtEndOf(int block)
{
    m_live.Clear();
    for (const int number : m_analysis.LiveOut(block))
        m_live.Insert(number);
}

void SlcLiveWalk::StepOver(const SlcPtr<SlcICode>& code)
{
    SlcDefUse& defUse = m_analysis.DefUse();
    defUse.Compute(code);
    for (const int number : defUse.Defs())
        m_live.Erase(number);
    for (const int number : defUse.Uses())
        m_live.Insert(number);
}
