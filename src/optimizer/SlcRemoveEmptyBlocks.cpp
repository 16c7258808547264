// Removes empty brackets, labels and jumps that other passes leave.
//
//     goto L; L:; x = 1                                  x = 1
//     goto A if g; x = 1; A:; goto B; ...; B:            goto B if g; x = 1; A:; goto B; ...; B:
//     {; }; {; x = 1; }; {; if f L; endif L; y = 1; }    {; x = 1; y = 1; }
//
// RemoveBlocks makes three walks. The first removes jumps to the next instruction, and determines
// which labels are used and which can be replaced by others. The second redirects jumps and removes
// unused labels. The third removes pairs of adjacent brackets of runs and guards. It keeps runs
// apart as SlcRegroupParallelBlocks does, with two differences: a comparison does not keep runs
// apart, and an order-sensitive call also keeps its run apart from the run before it. A label that
// becomes unused only when a jump is redirected is removed in the next round.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcRemoveEmptyBlocks, ...).

#include "optimizer/SlcRemoveEmptyBlocks.h"

#include <algorithm>
#include <optional>
#include <typeinfo>
#include <utility>
#include <vector>

#include "icode/SlcICodes.h"
#include "optimizer/SlcRemoveAt.h"
#include "optimizer/SlcUniformAccess.h"

namespace {

template <class Code>
bool IsExactly(const SlcPtr<SlcICode>& code)
{
    if (code.Null())
        return false;
    const SlcICode& object = *code;
    // A program has one `type_info` per class; `==` would also compare their names.
    return &typeid(object) == &typeid(Code);
}

/// The role of an instruction in the removal of pairs of brackets.
enum class Mark { None, OrderSensitiveCall, BeginParallel, EndParallel, If, EndIf };

[[nodiscard]] Mark MarkOf(const SlcPtr<SlcICode>& code)
{
    if (IsExactly<SlcCallICode>(code))
        return static_cast<const SlcCallICode&>(*code).m_orderSensitive ? Mark::OrderSensitiveCall
                                                                        : Mark::None;
    using namespace SlcICodeTraits;
    if (!code->Is(OpensRun | ClosesRun | OpensGuard | ClosesGuard))
        return Mark::None;
    if (code->Is(OpensRun))
        return Mark::BeginParallel;
    if (code->Is(ClosesRun))
        return Mark::EndParallel;
    return code->Is(OpensGuard) ? Mark::If : Mark::EndIf;
}

/// True if two adjacent instructions are a pair of brackets that may be removed.
[[nodiscard]] bool MayVanish(Mark first, Mark next)
{
    return (first == Mark::BeginParallel && next == Mark::EndParallel) ||
           (first == Mark::EndParallel && next == Mark::BeginParallel) ||
           (first == Mark::If && next == Mark::EndIf);
}

[[nodiscard]] std::vector<Mark> MarksOf(const std::deque<SlcPtr<SlcICode>>& codes)
{
    std::vector<Mark> marks;
    marks.reserve(codes.size());
    for (const auto& code : codes)
        marks.push_back(MarkOf(code));
    return marks;
}

/// For each begin and end of a parallel run, by position: whether the run contains an
/// order-sensitive call.
std::vector<bool> OrderSensitiveRuns(const std::vector<Mark>& marks)
{
    std::vector<bool> sensitive(marks.size(), false);
    std::size_t begin = 0;
    bool found = false;
    for (std::size_t i = 0; i < marks.size(); ++i) {
        switch (marks[i]) {
        case Mark::BeginParallel:
            begin = i;
            found = false;
            break;
        case Mark::EndParallel:
            sensitive[begin] = found;
            sensitive[i] = found;
            break;
        case Mark::OrderSensitiveCall:
            found = true;
            break;
        case Mark::None:
        case Mark::If:
        case Mark::EndIf:
            break;
        }
    }
    return sensitive;
}

}  // namespace

bool SlcRemoveEmptyBlocks::RemoveUnreachable(const SlcControlFlowGraph& graph, SlcListICode& list)
{
    std::vector<std::size_t> entries;  // by block: number of edges from blocks that stay
    std::vector<int> unreachable;
    for (const auto& block : graph.Blocks()) {
        entries.push_back(block.GetPredBlocks().size());
        if (block.GetBlockId() != 0 && block.GetPredBlocks().empty())
            unreachable.push_back(block.GetBlockId());
    }
    while (!unreachable.empty()) {
        const int block = unreachable.back();
        unreachable.pop_back();
        for (const int next : graph.Blocks()[block].GetNextBlocks())
            if (--entries[next] == 0 && next != 0)
                unreachable.push_back(next);
    }
    const auto stays = [&](const SlcBasicBlock& block) {
        return block.GetBlockId() == 0 || entries[block.GetBlockId()] != 0;
    };
    if (std::all_of(graph.Blocks().begin(), graph.Blocks().end(), stays))
        return false;
    m_hasRemovedReads = true;
    std::deque<SlcPtr<SlcICode>> kept;
    for (const auto& block : graph.Blocks())
        if (stays(block))
            kept.insert(kept.end(), block.GetListICode().begin(), block.GetListICode().end());
    list.m_icodes.swap(kept);
    return true;
}

bool SlcRemoveEmptyBlocks::RemoveBlocks(SlcListICode& list)
{
    CollectPlaces(list);
    bool changed = Phase(RemovePhase::CollectLabels, list);
    changed |= Phase(RemovePhase::RemoveLabels, list);
    changed |= RemovePairs(list);
    return changed;
}

void SlcRemoveEmptyBlocks::CollectPlaces(const SlcListICode& list)
{
    m_places.clear();
    std::size_t place = 0;
    for (const auto& code : list.m_icodes) {
        if (code->Is(SlcICodeTraits::NamesLabel))
            m_places.push_back(place);
        if (IsExactly<SlcLabelICode>(code))
            static_cast<SlcLabelICode&>(*code).m_place = 0;
        ++place;
    }
}

bool SlcRemoveEmptyBlocks::Phase(RemovePhase phase, SlcListICode& list)
{
    m_phase = phase;
    m_changed = false;
    auto& codes = list.m_icodes;
    std::vector<std::size_t> removed;
    for (const std::size_t place : m_places) {
        m_remove = false;
        const SlcPtr<SlcICode>& code = codes[place];
        m_next = place + 1 < codes.size() ? codes[place + 1] : nullptr;
        code->ApplyWalker(this);
        if (!m_remove)
            continue;
        removed.push_back(place);
        // A label, or an unconditional jump, reads nothing.
        m_hasRemovedReads =
            m_hasRemovedReads || !(IsExactly<SlcLabelICode>(code) || IsExactly<SlcGotoICode>(code));
    }
    m_next = nullptr;
    if (removed.empty())
        return m_changed;
    RemoveAt(removed, codes);
    return true;
}

void SlcRemoveEmptyBlocks::RemoveAt(const std::vector<std::size_t>& removed,
                                    std::deque<SlcPtr<SlcICode>>& codes)
{
    SlcRemoveAt(removed, codes);
    std::vector<std::size_t> places;
    std::size_t gone = 0;
    for (const std::size_t place : m_places) {
        if (gone < removed.size() && removed[gone] == place)
            ++gone;
        else
            places.push_back(place - gone);
    }
    m_places.swap(places);
}

// Pairs are removed from the inside out with a stack, so that one walk replaces repeated walks:
// each removal makes the instructions before and after it adjacent.
bool SlcRemoveEmptyBlocks::RemovePairs(SlcListICode& list)
{
    const std::vector<Mark> marks = MarksOf(list.m_icodes);
    // Nested pairs are removed first, so without an innermost pair there is nothing to do.
    if (std::adjacent_find(marks.begin(), marks.end(), MayVanish) == marks.end())
        return false;
    const std::vector<bool> sensitive = OrderSensitiveRuns(marks);
    std::optional<SlcUniformAccessOfRuns> uniforms;  // created on demand, since seams are rare
    const auto mayJoin = [&](std::size_t first, std::size_t next) {
        if (!uniforms)
            uniforms.emplace(list.m_icodes);
        const bool joins = uniforms->Join(first, next);
        m_hasKeptSeams = m_hasKeptSeams || !joins;
        return joins;
    };
    struct Kept {
        std::size_t place;  // in the list
        Mark mark;
        bool sensitive;
        std::size_t run;  // number of the last run begun
    };
    std::vector<Kept> kept;
    kept.reserve(list.m_icodes.size());
    std::vector<Kept> seamEnds;  // removed ends of the runs that have become the current one
    std::size_t runs = 0;
    for (std::size_t i = 0; i < list.m_icodes.size(); ++i) {
        runs += marks[i] == Mark::BeginParallel ? 1 : 0;
        const Kept current{i, marks[i], sensitive[i], runs - 1};
        if (!kept.empty()) {
            const Kept& last = kept.back();
            const bool emptyRun =
                last.mark == Mark::BeginParallel && current.mark == Mark::EndParallel;
            const bool emptyGuard = last.mark == Mark::If && current.mark == Mark::EndIf;
            const bool seam = last.mark == Mark::EndParallel &&
                              current.mark == Mark::BeginParallel && !last.sensitive &&
                              !current.sensitive && mayJoin(last.run, current.run);
            if (seam)
                seamEnds.push_back(last);
            m_hasRemovedReads = m_hasRemovedReads || emptyGuard;
            if (emptyRun || emptyGuard || seam) {
                kept.pop_back();
                continue;
            }
        }
        if (current.mark == Mark::EndParallel && !seamEnds.empty()) {
            // The merged run keeps the begin of its first part, and therefore the end of that part.
            kept.push_back(seamEnds.front());
            seamEnds.clear();
            continue;
        }
        kept.push_back(current);
    }
    const bool changed = kept.size() != list.m_icodes.size();
    if (changed) {
        std::deque<SlcPtr<SlcICode>> codes;
        for (const Kept& entry : kept)
            codes.push_back(std::move(list.m_icodes[entry.place]));
        list.m_icodes.swap(codes);
    }
    return changed;
}

void SlcRemoveEmptyBlocks::ReplaceLabel(const SlcLabelICode& old, const SlcLabel& newLabel,
                                        bool onlyIfUsed)
{
    if (const auto alias = m_aliases.find(&*newLabel); alias != m_aliases.end()) {
        const SlcLabel target = alias->second;
        m_aliases.emplace(&old, target);
    } else if (!onlyIfUsed || newLabel->m_place == 1) {
        m_aliases.emplace(&old, newLabel);
        // A redirected jump still needs the new label, even if the jump that used it is removed.
        Use(newLabel);
    }
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcGotoICode> code)
{
    if (m_phase == RemovePhase::CollectLabels) {
        if (m_next == code->m_label)
            m_remove = true;
        else
            Use(code->m_label);
        return;
    }
    const auto alias = m_aliases.find(&*code->m_label);
    if (alias != m_aliases.end() && !(alias->second == code->m_label)) {
        code->m_label = alias->second;
        m_changed = true;
    }
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcBreakICode> code)
{
    if (m_phase == RemovePhase::CollectLabels)
        Use(code->m_label);
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcContinueICode> code)
{
    if (m_phase == RemovePhase::CollectLabels)
        Use(code->m_label);
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcBeginIlluminanceICode> code)
{
    if (m_phase != RemovePhase::CollectLabels)
        return;
    Use(code->m_startLabel);
    Use(code->m_endLabel);
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcEndIlluminanceICode> code)
{
    if (m_phase == RemovePhase::CollectLabels)
        Use(code->m_startLabel);
}

void SlcRemoveEmptyBlocks::Case(SlcPtr<SlcLabelICode> code)
{
    if (m_phase == RemovePhase::RemoveLabels) {
        m_remove = code->m_place != 1;
        return;
    }
    if (IsExactly<SlcLabelICode>(m_next))
        ReplaceLabel(*CheckCast<SlcLabelICode>(m_next), code, true);
    else if (IsExactly<SlcGotoICode>(m_next))
        ReplaceLabel(*code, CheckCast<SlcGotoICode>(m_next)->m_label, false);
}
