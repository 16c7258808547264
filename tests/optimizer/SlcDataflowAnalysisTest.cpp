// Compares the results of four parts of the optimizer on random lists with the definitions: live
// variables, live ranges, variables that share storage, and dead code.

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <sstream>

#include "helpers/CodeText.h"
#include "icode/SlcICodes.h"
#include "optimizer/SlcDeadCodeElimination.h"
#include "optimizer/SlcLiveRanges.h"
#include "optimizer/SlcReduceNumberTmps.h"

namespace {

using Sets = std::vector<std::set<int>>;

/// Makes lists of guards and random jumps, with more variables than a group of the analysis has.
/// Endless loops and unreachable code come only from unconditional jumps, which only `jumpsAlways`
/// allows.
class RandomList {
public:
    RandomList(unsigned int seed, bool jumpsAlways) : m_random(seed), m_jumpsAlways(jumpsAlways) {}

    std::string Make()
    {
        const int labels = 1 + Below(12);
        std::string text = "begin;";
        for (int label = 0; label < labels; ++label) {
            const int lines = Below(10);
            for (int i = 0; i < lines; ++i)
                text += ' ' + Line();
            text += " L" + std::to_string(label) + ":";
            if (Below(3) != 0) {
                const std::string target = std::to_string(Below(labels));
                text += m_jumpsAlways && Below(6) == 0 ? " goto L" : " g? goto L";
                text += target + ';';
            }
        }
        return text + " Ci = " + Variable() + "; end;";
    }

private:
    int Below(int count) { return static_cast<int>(m_random() % static_cast<unsigned int>(count)); }
    std::string Variable() { return "x" + std::to_string(Below(90)); }
    std::string Line()
    {
        const std::string target = Variable();
        const std::string assignment =
            target + " = " + (Below(8) == 0 ? target : Variable() + " + " + Variable()) + ';';
        return Below(3) != 0 ? assignment : "f?( " + assignment + " )";
    }

    std::mt19937 m_random;
    bool m_jumpsAlways;
};

/// Returns the live-in set of each block.
Sets LiveIn(const SlcControlFlowGraph& graph, SlcDefUse& defUse)
{
    Sets live(graph.Blocks().size());
    for (bool changed = true; changed;) {
        changed = false;
        for (const auto& block : graph.Blocks()) {
            std::set<int> here;
            for (const int next : block.GetNextBlocks())
                here.insert(live[next].begin(), live[next].end());
            const auto& codes = block.GetListICode();
            for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
                defUse.Compute(*code);
                for (const int defined : defUse.Defs())
                    here.erase(defined);
                here.insert(defUse.Uses().begin(), defUse.Uses().end());
            }
            changed |= here != live[block.GetBlockId()];
            live[block.GetBlockId()] = here;
        }
    }
    return live;
}

bool OnlyComputes(const SlcICode& code)
{
    return dynamic_cast<const SlcAssignICode*>(&code) || dynamic_cast<const SlcAddICode*>(&code);
}

/// Returns the variables that are read by an instruction with an effect, or by one that computes
/// such a variable.
std::set<int> Needed(const SlcListICode& list, SlcDefUse& defUse)
{
    std::set<int> needed;
    for (std::size_t before = needed.size() + 1; before != needed.size();) {
        before = needed.size();
        for (const auto& code : list.m_icodes) {
            defUse.Compute(code);
            if (!OnlyComputes(*code) || needed.count(defUse.Defs().front()) != 0)
                needed.insert(defUse.Uses().begin(), defUse.Uses().end());
        }
    }
    return needed;
}

/// Until nothing changes, removes computations that are dead according to `LiveIn` or `Needed`, and
/// assignments of a variable to itself. Returns the text of the rest.
std::string WithoutDeadCode(SlcListICode& list)
{
    for (bool changed = true; changed;) {
        const SlcVariableNumbers variables(list);
        SlcDefUse defUse(variables);
        const SlcControlFlowGraph graph(list);
        const Sets liveIn = LiveIn(graph, defUse);
        const std::set<int> needed = Needed(list, defUse);
        std::deque<SlcPtr<SlcICode>> kept;
        for (const auto& block : graph.Blocks()) {
            std::set<int> live;
            for (const int next : block.GetNextBlocks())
                live.insert(liveIn[next].begin(), liveIn[next].end());
            std::deque<SlcPtr<SlcICode>> inBlock;
            const auto& codes = block.GetListICode();
            for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
                const auto* copy = dynamic_cast<const SlcAssignICode*>(&**code);
                defUse.Compute(*code);
                if (!OnlyComputes(**code) || (live.count(defUse.Defs().front()) != 0 &&
                                              needed.count(defUse.Defs().front()) != 0 &&
                                              !(copy && copy->m_dest == copy->m_source)))
                    inBlock.push_front(*code);
                for (const int defined : defUse.Defs())
                    live.erase(defined);
                live.insert(defUse.Uses().begin(), defUse.Uses().end());
            }
            kept.insert(kept.end(), inBlock.begin(), inBlock.end());
        }
        changed = kept.size() != list.m_icodes.size();
        list.m_icodes.swap(kept);
    }
    return CodeText::Print(list);
}

/// Returns two variables of the dump that interfere and yet share storage; empty if there are none.
std::string WronglyShared(const std::string& dump)
{
    std::map<std::string, std::string> stays;
    std::map<std::string, std::vector<std::string>> neighbors;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
        const std::size_t colon = line.find(": ");
        const std::size_t replacement = line.find("(new var: ");
        const std::string name = line.substr(0, colon);
        std::istringstream names(line.substr(colon + 2, replacement - colon - 2));
        for (std::string neighbor; names >> neighbor;)
            neighbors[name].push_back(neighbor);
        stays[name] = line.substr(replacement + 10, line.size() - replacement - 11);
    }
    for (const auto& [name, others] : neighbors)
        for (const std::string& other : others)
            if (other != name && stays[name] == stays[other])
                return name + " and " + other;
    return {};
}

}  // namespace

TEST(SlcDataflowAnalysis, FindsLiveVariables)
{
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const std::string text = RandomList(seed, true).Make();
        const auto list = CodeText().List(text);
        const SlcVariableNumbers variables(*list);
        SlcDefUse defUse(variables);
        const SlcControlFlowGraph graph(*list);
        const Sets expected = LiveIn(graph, defUse);
        SlcDataflowAnalysis analysis(graph, variables, defUse);
        for (const auto& block : graph.Blocks()) {
            const int id = block.GetBlockId();
            std::set<int> after;
            for (const int next : block.GetNextBlocks())
                after.insert(expected[next].begin(), expected[next].end());
            for (int variable = 0; variable < variables.Count(); ++variable) {
                const std::string where = "seed " + std::to_string(seed) + ", block " +
                                          std::to_string(id) + ", " +
                                          variables.Variable(variable)->GetName() + "\n" + text;
                ASSERT_EQ(analysis.IsLiveIn(id, variable), expected[id].count(variable) != 0)
                    << where;
                ASSERT_EQ(analysis.IsLiveOut(id, variable), after.count(variable) != 0) << where;
            }
        }
    }
}

TEST(SlcLiveRanges, ContainWritesAndLiveVariablesAfterEachInstruction)
{
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const std::string text = RandomList(seed, true).Make();
        const auto list = CodeText().List(text);
        const SlcVariableNumbers variables(*list);
        SlcDefUse defUse(variables);
        const SlcControlFlowGraph graph(*list);
        const Sets liveIn = LiveIn(graph, defUse);
        SlcDataflowAnalysis analysis(graph, variables, defUse);
        SlcLiveRanges ranges(graph, analysis);

        std::vector<std::set<int>> expected(variables.Count());
        for (const int variable : liveIn[0])
            expected[variable].insert(-1);
        int end = 0;
        for (const auto& block : graph.Blocks()) {
            std::set<int> live;
            for (const int next : block.GetNextBlocks())
                live.insert(liveIn[next].begin(), liveIn[next].end());
            end += static_cast<int>(block.GetListICode().size());
            int place = end;
            const auto& codes = block.GetListICode();
            for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
                --place;
                defUse.Compute(*code);
                for (const int variable : live)
                    expected[variable].insert(place);
                for (const int defined : defUse.Defs()) {
                    expected[defined].insert(place);
                    live.erase(defined);
                }
                live.insert(defUse.Uses().begin(), defUse.Uses().end());
            }
        }
        for (int variable = 0; variable < variables.Count(); ++variable) {
            std::set<int> places;
            for (const SlcLiveRange& range : ranges.Take(variable))
                for (int place = range.first; place <= range.last; ++place)
                    places.insert(place);
            ASSERT_EQ(places, expected[variable])
                << "seed " << seed << ", " << variables.Variable(variable)->GetName() << "\n"
                << text;
        }
    }
}

TEST(SlcReduceNumberTmps, SeparatesVariablesThatInterfere)
{
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const std::string text = RandomList(seed, false).Make();
        const auto list = CodeText().List(text);
        const SlcVariableNumbers variables(*list);
        SlcDefUse defUse(variables);
        const SlcControlFlowGraph graph(*list);
        SlcDataflowAnalysis analysis(graph, variables, defUse);
        SlcText dump;
        SlcReduceNumberTmps().Reduce(*list, graph, analysis, &dump);
        ASSERT_EQ(WronglyShared(dump.Str()), "") << "seed " << seed << "\n" << text;
    }
}

TEST(SlcDeadCodeElimination, RemovesAllDeadCode)
{
    for (unsigned int seed = 1; seed <= 300; ++seed) {
        const std::string text = RandomList(seed, true).Make();
        const auto list = CodeText().List(text);
        for (bool changed = true; changed;) {
            const SlcVariableNumbers variables(*list);
            SlcDefUse defUse(variables);
            SlcControlFlowGraph graph(*list);
            SlcDataflowAnalysis analysis(graph, variables, defUse);
            changed = SlcDeadCodeElimination().EliminateCode(*list, graph, analysis);
        }
        ASSERT_EQ(CodeText::Print(*list), WithoutDeadCode(*CodeText().List(text)))
            << "seed " << seed << "\n"
            << text;
    }
}
