// Liveness by backward data-flow analysis: the live-in variables of a block are those that it reads
// before writing them, and those that are live-out and not written (Aho, Sethi and Ullman,
// "Compilers: principles, techniques, and tools", 1986, section 10.6). 64 variables share a word.
//
//     [x = p; if f L] [y = x; z = 1] [endif L; Ci = y]
//
//     x is live-in at block 1; y at 2 and also at 0, since points that skip the guard
//     keep their previous y
//
// Ours departs in the blocks that it visits. Shaders are long and their variables short-lived, so
// sets for every block would take quadratic space. Therefore each variable is tracked only between
// the nearest cuts around its mentions (SlcGraphCuts), and up to 64 variables of about the same
// range form a group.
//
// Tested by tests/optimizer/SlcDataflowAnalysisTest.cpp against plain sets, on random code.

#include "optimizer/SlcDataflowAnalysis.h"

#include <algorithm>
#include <bit>
#include <tuple>
#include <utility>

namespace {

constexpr std::size_t k_groupSize = 64;  // variables; the bits of a word

constexpr std::uint64_t BitOf(std::size_t bit)
{
    return std::uint64_t{1} << bit;
}

}  // namespace

SlcDataflowAnalysis::SlcDataflowAnalysis(const SlcControlFlowGraph& graph,
                                         const SlcVariableNumbers& variables, SlcDefUse& defUse)
    : m_graph(graph),
      m_variables(variables),
      m_defUse(defUse),
      m_places(variables.Count())
{
    CollectBlockSets();
    for (const SlcBasicBlock& block : graph.Blocks())
        if (std::any_of(block.GetPredBlocks().begin(), block.GetPredBlocks().end(),
                        [&](int predecessor) { return predecessor >= block.GetBlockId(); }))
            m_loopHeads.push_back(block.GetBlockId());
    MakeGroups(FollowedVariables());
}

void SlcDataflowAnalysis::CollectBlockSets()
{
    // By variable: the last block that reads it before writing it, and the last one that writes it.
    std::vector<int> usedIn(m_variables.Count(), -1);
    std::vector<int> definedIn(m_variables.Count(), -1);
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        for (const auto& code : block.GetListICode()) {
            m_defUse.Compute(code);
            const auto [uses, defs, computes, assignsItself] = m_defUse.Of(*code);
            for (const int number : uses)
                if (definedIn[number] != id && std::exchange(usedIn[number], id) != id)
                    m_blockUse.Add(number);
            for (const int number : defs)
                if (std::exchange(definedIn[number], id) != id)
                    m_blockDef.Add(number);
        }
        m_blockUse.EndList();
        m_blockDef.EndList();
    }
    SlcDetailNode* const unknown = SlcDetailNode::AUnknown();
    for (int number = 0; number < m_variables.Count(); ++number)
        if ((usedIn[number] >= 0 || definedIn[number] >= 0) &&
            !m_variables.Variable(number)->IsUniform())
            m_variables.Variable(number)->SetDetail(unknown);
}

// After the first cut that follows its last mention, a variable is dead. Before the last cut that
// precedes its first mention, it is live everywhere or nowhere, as at that cut.
std::vector<SlcDataflowAnalysis::Followed> SlcDataflowAnalysis::FollowedVariables() const
{
    const SlcGraphCuts cuts(m_graph);
    std::vector<int> entry(m_variables.Count(), -1);
    std::vector<Followed> followed;
    const int blocks = static_cast<int>(m_blockUse.Count());
    for (int block = 0; block < blocks; ++block) {
        for (const int variable : m_blockUse[block]) {
            if (entry[variable] < 0) {
                entry[variable] = static_cast<int>(followed.size());
                followed.push_back({variable, cuts.LastUpTo(block), 0});
            }
            followed[entry[variable]].end = cuts.FirstAfter(block);
        }
    }
    for (int block = 0; block < blocks; ++block) {
        for (const int variable : m_blockDef[block]) {
            if (entry[variable] < 0)
                continue;
            Followed& entryOf = followed[entry[variable]];
            entryOf.first = std::min(entryOf.first, cuts.LastUpTo(block));
            entryOf.end = std::max(entryOf.end, cuts.FirstAfter(block));
        }
    }
    return followed;
}

void SlcDataflowAnalysis::MakeGroups(const std::vector<Followed>& followed)
{
    // Sort by the magnitude of the range's size, then by position, so that the ranges in most
    // groups have similar sizes and overlap or nearly do.
    std::vector<const Followed*> order;
    order.reserve(followed.size());
    for (const Followed& entry : followed)
        order.push_back(&entry);
    const auto key = [](const Followed& entry) {
        const auto size = std::bit_width(static_cast<unsigned int>(entry.end - entry.first));
        return std::make_tuple(size, entry.first, entry.variable);
    };
    std::sort(order.begin(), order.end(),
              [&](const Followed* a, const Followed* b) { return key(*a) < key(*b); });

    std::vector<const Followed*> members;
    for (std::size_t from = 0; from < order.size(); from += k_groupSize) {
        members.assign(order.begin() + static_cast<std::ptrdiff_t>(from),
                       order.begin() +
                           static_cast<std::ptrdiff_t>(std::min(from + k_groupSize, order.size())));
        Group& group = m_groups.emplace_back();
        group.first = members.front()->first;
        for (const Followed* entry : members) {
            m_places[entry->variable] = {static_cast<int>(m_groups.size()) - 1,
                                         static_cast<int>(group.variables.size())};
            group.variables.push_back(entry->variable);
            group.first = std::min(group.first, entry->first);
            group.end = std::max(group.end, entry->end);
        }
        const std::size_t length = group.end - group.first;
        group.uses.assign(length, 0);
        group.defs.assign(length, 0);
        group.liveIn.assign(length, 0);
    }
    FillGroups();
    for (Group& group : m_groups) {
        Solve(group);
        RecordLiveAtLoops(group);
    }
}

void SlcDataflowAnalysis::FillGroups()
{
    const auto add = [this](std::vector<std::uint64_t> Group::*sets, int block, int variable) {
        const Place place = m_places[variable];
        if (place.group < 0)
            return;
        Group& group = m_groups[place.group];
        (group.*sets)[block - group.first] |= BitOf(place.bit);
    };
    const int blocks = static_cast<int>(m_blockUse.Count());
    for (int block = 0; block < blocks; ++block) {
        for (const int variable : m_blockUse[block])
            add(&Group::uses, block, variable);
        for (const int variable : m_blockDef[block])
            add(&Group::defs, block, variable);
    }
}

bool SlcDataflowAnalysis::UpdateLiveIn(Group& group, int block) const
{
    const std::size_t place = block - group.first;
    const std::uint64_t live = group.uses[place] | (LiveAfter(group, block) & ~group.defs[place]);
    return std::exchange(group.liveIn[place], live) != live;
}

// One sweep in reverse code order solves everything except what back edges contribute. After that,
// only the predecessors of changed blocks are visited: repeating the sweep until nothing changes
// would take as many sweeps as the loops are deep.
void SlcDataflowAnalysis::Solve(Group& group)
{
    std::vector<int> pending;  // a stack; at first the sources of back edges, outer loops on top
    std::vector<bool> isPending(group.end - group.first, false);
    const auto open = [&](int block) {
        if (isPending[block - group.first])
            return;
        isPending[block - group.first] = true;
        pending.push_back(block);
    };
    for (int block = group.end - 1; block >= group.first; --block)
        if (UpdateLiveIn(group, block))
            for (const int predecessor : m_graph.Blocks()[block].GetPredBlocks())
                if (predecessor >= block)
                    open(predecessor);
    m_visits += group.end - group.first;
    for (; !pending.empty(); ++m_visits) {
        const int block = pending.back();
        pending.pop_back();
        isPending[block - group.first] = false;
        if (UpdateLiveIn(group, block))
            for (const int predecessor : m_graph.Blocks()[block].GetPredBlocks())
                if (predecessor >= group.first)
                    open(predecessor);
    }
}

// Variables that are live at the front of the range are also live before it, and in loops there.
void SlcDataflowAnalysis::RecordLiveAtLoops(Group& group) const
{
    auto head = std::lower_bound(m_loopHeads.begin(), m_loopHeads.end(), group.first);
    if (head != m_loopHeads.begin() && group.end > group.first)
        group.aroundLoops = group.liveIn.front();
    for (; head != m_loopHeads.end() && *head < group.end; ++head)
        group.aroundLoops |= group.LiveInAt(*head);
}

bool SlcDataflowAnalysis::IsLiveAroundLoop(int variable) const
{
    const Place place = m_places[variable];
    return place.group >= 0 && (m_groups[place.group].aroundLoops & BitOf(place.bit)) != 0;
}

void SlcDataflowAnalysis::ForgetRead(int block, int variable)
{
    const Place place = m_places[variable];
    Group& group = m_groups[place.group];
    group.uses[block - group.first] &= ~BitOf(place.bit);
    if (!group.isChanging)
        m_changing.push_back(&group);
    BeginChange(group);
}

void SlcDataflowAnalysis::BeginChange(Group& group)
{
    if (std::exchange(group.isChanging, true))
        return;
    group.before = group.liveIn;
}

void SlcDataflowAnalysis::RefreshLiveIn(int block)
{
    std::erase_if(m_changing, [block](const Group* group) { return group->first > block; });
    for (Group* group : m_changing)
        (void)UpdateLiveIn(*group, block);
}

// The sets can only shrink. But a solution that started from the old sets would keep a variable
// live around a loop only because it was live there, so changed groups are solved from empty sets.
bool SlcDataflowAnalysis::Update(std::span<const int> blocks)
{
    for (const int block : blocks)
        RefillGroups(block);
    m_changing.clear();
    bool changed = false;
    for (Group& group : m_groups) {
        if (!std::exchange(group.isChanging, false))
            continue;
        std::fill(group.liveIn.begin(), group.liveIn.end(), 0);
        Solve(group);
        changed = changed || HasChangedAtLoops(group);
        group.aroundLoops = 0;
        RecordLiveAtLoops(group);
    }
    return changed;
}

bool SlcDataflowAnalysis::HasChangedAtLoops(const Group& group) const
{
    auto head = std::lower_bound(m_loopHeads.begin(), m_loopHeads.end(), group.first);
    if (head != m_loopHeads.begin() && group.liveIn.front() != group.before.front())
        return true;
    for (; head != m_loopHeads.end() && *head < group.end; ++head)
        if (group.liveIn[*head - group.first] != group.before[*head - group.first])
            return true;
    return false;
}

// A variable has no group if no block reads it before writing it, and removals cannot change that.
void SlcDataflowAnalysis::RefillGroups(int block)
{
    const auto set = [this, block](std::vector<std::uint64_t> Group::*sets, int variable, bool is) {
        const Place place = m_places[variable];
        if (place.group < 0)
            return;
        Group& group = m_groups[place.group];
        BeginChange(group);
        std::uint64_t& word = (group.*sets)[block - group.first];
        word = is ? word | BitOf(place.bit) : word & ~BitOf(place.bit);
    };
    for (const int variable : m_blockUse[block])
        set(&Group::uses, variable, false);
    for (const int variable : m_blockDef[block])
        set(&Group::defs, variable, false);
    const auto codes = m_graph.Blocks()[block].GetListICode();
    for (auto code = codes.rbegin(); code != codes.rend(); ++code) {
        m_defUse.Compute(*code);
        for (const int variable : m_defUse.Defs()) {
            set(&Group::defs, variable, true);
            set(&Group::uses, variable, false);
        }
        for (const int variable : m_defUse.Uses())
            set(&Group::uses, variable, true);
    }
}

std::uint64_t SlcDataflowAnalysis::LiveAfter(const Group& group, int block) const
{
    std::uint64_t live = 0;
    for (const int next : m_graph.Blocks()[block].GetNextBlocks())
        live |= group.LiveInAt(next);
    return live;
}

bool SlcDataflowAnalysis::IsLiveIn(int block, int variable) const
{
    const Place place = m_places[variable];
    return place.group >= 0 && (m_groups[place.group].LiveInAt(block) & BitOf(place.bit)) != 0;
}

bool SlcDataflowAnalysis::IsLiveOut(int block, int variable) const
{
    const auto& next = m_graph.Blocks()[block].GetNextBlocks();
    return std::any_of(next.begin(), next.end(), [&](int b) { return IsLiveIn(b, variable); });
}

void SlcDataflowAnalysis::PrintNames(SlcText& out, const char* title,
                                     std::vector<int> numbers) const
{
    std::sort(numbers.begin(), numbers.end());
    out << title;
    for (const int number : numbers)
        out << m_variables.Variable(number)->GetName() << ' ';
    out << '\n';
}

void SlcDataflowAnalysis::Print(SlcText& out) const
{
    out << "Nb iterations: " << m_visits << "\n\n";
    for (const auto& block : m_graph.Blocks()) {
        const int id = block.GetBlockId();
        std::vector<int> liveIn;
        std::vector<int> liveOut;
        for (int variable = 0; variable < m_variables.Count(); ++variable) {
            if (IsLiveIn(id, variable))
                liveIn.push_back(variable);
            if (IsLiveOut(id, variable))
                liveOut.push_back(variable);
        }
        out << "Block " << id << '\n';
        PrintNames(out, "   Def Vars: ", {m_blockDef[id].begin(), m_blockDef[id].end()});
        PrintNames(out, "   Use Vars: ", {m_blockUse[id].begin(), m_blockUse[id].end()});
        PrintNames(out, "   In Vars: ", liveIn);
        PrintNames(out, "   Out Vars: ", liveOut);
    }
}

bool SlcLiveTest::IsLive(int variable) const
{
    const Seen& seen = m_seen[variable];
    return seen.block == m_block ? seen.isLive : m_analysis.IsLiveOut(m_block, variable);
}

void SlcLiveTest::StepOver(const SlcPtr<SlcICode>& code)
{
    SlcDefUse& defUse = m_analysis.DefUse();
    defUse.Compute(code);
    StepOver(defUse.Uses(), defUse.Defs());
}

void SlcLiveTest::StepOver(std::span<const int> uses, std::span<const int> defs)
{
    for (const int number : defs)
        m_seen[number] = {m_block, false};
    for (const int number : uses)
        m_seen[number] = {m_block, true};
}
