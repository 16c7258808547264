// Compares the loop nest with one that is computed from the definitions: a block dominates those
// that cannot be reached without it, and back edges make a loop.

#include "optimizer/SlcLoopNest.h"

#include <gtest/gtest.h>

#include <random>
#include <set>

#include "helpers/CodeText.h"

namespace {

using Blocks = std::set<int>;

/// Returns labels with forward and backward jumps between them.
std::string RandomCode(std::mt19937& random)
{
    const unsigned int labels = 2 + random() % 9;
    std::string code = "x = 1;";
    for (unsigned int i = 0; i < labels; ++i) {
        code += " L" + std::to_string(i) + ": x = x + 1;";
        const std::string target = std::to_string(random() % labels);
        switch (random() % 5) {
        case 0:
            code += " goto L" + target + ';';
            break;
        case 1:
        case 2:
            code += " g? goto L" + target + ';';
            break;
        default:
            break;
        }
    }
    return code + " end;";
}

class PlainNest {
public:
    explicit PlainNest(const SlcControlFlowGraph& graph) : m_graph(graph) {}

    [[nodiscard]] bool IsReached(int block, int avoided = -1) const
    {
        Blocks seen;
        std::vector<int> pending = {0};
        while (!pending.empty()) {
            const int at = pending.back();
            pending.pop_back();
            if (at == avoided || !seen.insert(at).second)
                continue;
            const auto& next = m_graph.Blocks()[at].GetNextBlocks();
            pending.insert(pending.end(), next.begin(), next.end());
        }
        return seen.count(block) != 0;
    }

    [[nodiscard]] bool Dominates(int dominator, int block) const
    {
        return IsReached(dominator) && IsReached(block) &&
               (dominator == block || !IsReached(block, dominator));
    }

    /// Returns the blocks of the loop with that head; empty if there is none.
    [[nodiscard]] Blocks LoopOf(int head) const
    {
        std::vector<int> pending;
        bool isHead = false;
        for (const int predecessor : m_graph.Blocks()[head].GetPredBlocks()) {
            if (Dominates(head, predecessor))
                pending.push_back(predecessor);
            else if (predecessor >= head)
                return {};
            isHead = isHead || predecessor >= head;
        }
        if (!isHead)
            return {};
        Blocks loop = {head};
        while (!pending.empty()) {
            const int at = pending.back();
            pending.pop_back();
            if (!IsReached(at) || !loop.insert(at).second)
                continue;
            const auto& before = m_graph.Blocks()[at].GetPredBlocks();
            pending.insert(pending.end(), before.begin(), before.end());
        }
        return loop;
    }

    [[nodiscard]] std::vector<int> BlocksThatAlwaysRun(const Blocks& loop) const
    {
        std::vector<int> blocks;
        for (const int block : loop)
            if (std::all_of(loop.begin(), loop.end(), [&](int other) {
                    return !IsExit(loop, other) || Dominates(block, other);
                }))
                blocks.push_back(block);
        return blocks;
    }

    [[nodiscard]] bool IsExit(const Blocks& loop, int block) const
    {
        const auto& next = m_graph.Blocks()[block].GetNextBlocks();
        return std::any_of(next.begin(), next.end(),
                           [&](int successor) { return loop.count(successor) == 0; });
    }

private:
    const SlcControlFlowGraph& m_graph;
};

Blocks BlocksOf(const SlcLoopNest& nest, const SlcLoopNest::Loop& loop, int count)
{
    Blocks blocks;
    for (int block = 0; block < count; ++block)
        if (nest.Contains(loop, block))
            blocks.insert(block);
    return blocks;
}

/// Returns the place of the innermost loop around both blocks; `k_none` if there is none. An inner
/// loop has a higher place than the loops around it.
int CommonPlace(const SlcLoopNest& nest, int block, int other)
{
    int place = SlcLoopNest::k_none;
    for (const auto& loop : nest.Loops())
        if (nest.Contains(loop, block) && nest.Contains(loop, other))
            place = std::max(place, loop.place);
    return place;
}

}  // namespace

TEST(SlcLoopNest, FindsTheLoopsOfTheDefinition)
{
    std::mt19937 random(7);
    int loops = 0;
    for (int run = 0; run < 600; ++run) {
        const std::string code = RandomCode(random);
        const auto list = CodeText().List(code);
        const SlcControlFlowGraph graph(*list);
        const SlcDominators dominators(graph);
        const SlcLoopNest nest(graph, dominators);
        const PlainNest plain(graph);
        const int count = static_cast<int>(graph.Blocks().size());

        auto loop = nest.Loops().begin();
        for (int head = 0; head < count; ++head) {
            const Blocks blocks = plain.LoopOf(head);
            if (blocks.empty())
                continue;
            ASSERT_TRUE(loop != nest.Loops().end() && loop->head == head) << code;
            EXPECT_EQ(BlocksOf(nest, *loop, count), blocks) << code;
            EXPECT_EQ(nest.BlocksThatAlwaysRun(*loop), plain.BlocksThatAlwaysRun(blocks)) << code;
            ++loop;
            ++loops;
        }
        EXPECT_TRUE(loop == nest.Loops().end()) << code;
        for (int other = 0; other < count; ++other) {
            const int place = nest.PlaceOf(other);
            for (int block = 0; block < count && place != SlcLoopNest::k_none; ++block)
                EXPECT_EQ(nest.CommonPlace(block, place), CommonPlace(nest, block, other)) << code;
        }
    }
    EXPECT_GT(loops, 300);  // otherwise the random code has too few loops
}
