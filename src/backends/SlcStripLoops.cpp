// Finds loops that can run strip by strip:
//
//     top: for each point: ...; any |= f  if (!any) goto end  for each point: ...  goto top  end:
// becomes
//     for each strip { top: ...; if (!any) goto end; ...; goto top; end: }
//
// The values of a strip stay in the first-level cache, and a strip ends as soon as its own points
// have left the loop. The idea and its literature are in runtime/machine/translate/QxJoinRuns.cpp.
//
// The flag that a jump tests may be true for the grid but false for a strip. So only jumps right
// after the point loops that set the flag may read it.
//
// Tested by tests/backends/PointLoopsTest.cpp, and with whole shaders by tests/host.

#include <algorithm>
#include <map>

#include "backends/SlcPointLoops.h"
#include "icode/SlcICodes.h"
#include "icode/SlcOperandWalker.h"

namespace {

constexpr std::size_t k_none = static_cast<std::size_t>(-1);

/// Counts how often each variable is read.
class ReadCounts : private SlcOperandWalker {
public:
    void Add(const SlcPtr<SlcICode>& code) { Visit(code); }
    [[nodiscard]] int Of(const SlcOperand& operand) const
    {
        const auto found = m_counts.find(operand);
        return found == m_counts.end() ? 0 : found->second;
    }

private:
    void Read(SlcOperand& operand) override { ++m_counts[operand]; }
    void Write(SlcOperand&) override {}

    std::map<SlcOperand, int> m_counts;  // for look-up only
};

/// Finds the label that an instruction defines, or its jump target and the flag that it tests.
class Flow : private SlcAllICodeWalker {
public:
    struct Parts {
        SlcLabel label;
        SlcLabel target;
        SlcOperand flag;
    };
    [[nodiscard]] Parts Of(const SlcPtr<SlcICode>& code)
    {
        m_parts = {};
        code->ApplyWalker(this);
        return m_parts;
    }

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcLabelICode> code) override { m_parts.label = code; }
    void Case(SlcPtr<SlcGotoICode> code) override { m_parts.target = code->m_label; }
    void Case(SlcPtr<SlcIfTrueGotoICode> code) override
    {
        m_parts = {nullptr, code->m_label, code->m_flag};
    }
    void Case(SlcPtr<SlcIfFalseGotoICode> code) override
    {
        m_parts = {nullptr, code->m_label, code->m_flag};
    }
    void Default(SlcPtr<SlcICode>) override {}

    Parts m_parts;
};

class StripFinder {
public:
    StripFinder(const SlcListICode& list, const std::vector<SlcPointLoop>& loops)
        : m_codes(list.m_icodes),
          m_loopAt(m_codes.size() + 1, nullptr),
          m_loopTo(m_codes.size() + 1, nullptr)
    {
        for (const SlcPointLoop& loop : loops) {
            m_loopAt[loop.begin] = &loop;
            m_loopTo[loop.end] = &loop;
        }
    }
    [[nodiscard]] std::vector<SlcStripLoop> Find();

private:
    void Record();
    [[nodiscard]] bool IsReadRightAfter(std::size_t jump) const;
    [[nodiscard]] std::size_t EndOf(std::size_t begin) const;
    [[nodiscard]] bool CanRunByStrips(std::size_t begin, std::size_t end) const;
    [[nodiscard]] bool StaysInside(std::size_t place, std::size_t begin, std::size_t end) const;

    struct Label {
        std::size_t place = k_none;
        std::vector<std::size_t> jumps;
    };
    const std::deque<SlcPtr<SlcICode>>& m_codes;
    std::vector<const SlcPointLoop*> m_loopAt;  // by instruction: the loop that begins there
    std::vector<const SlcPointLoop*> m_loopTo;  // by instruction: the loop that ends before it
    std::vector<Flow::Parts> m_flow;            // by instruction
    std::map<SlcLabel, Label> m_labels;         // for look-up only
    ReadCounts m_reads;
    std::map<SlcOperand, int> m_readsRightAfter;  // by flag; for look-up only
};

std::vector<SlcStripLoop> StripFinder::Find()
{
    Record();
    std::vector<SlcStripLoop> strips;
    for (std::size_t i = 0; i < m_codes.size(); ++i) {
        const std::size_t end = EndOf(i);
        if (end == k_none || !CanRunByStrips(i, end))
            continue;
        strips.push_back({i, end});
        i = end - 1;
    }
    return strips;
}

void StripFinder::Record()
{
    Flow flow;
    for (std::size_t i = 0; i < m_codes.size(); ++i) {
        m_reads.Add(m_codes[i]);
        m_flow.push_back(flow.Of(m_codes[i]));
        if (m_flow[i].label)
            m_labels[m_flow[i].label].place = i;
        if (m_flow[i].target)
            m_labels[m_flow[i].target].jumps.push_back(i);
        if (IsReadRightAfter(i))
            ++m_readsRightAfter[m_flow[i].flag];
    }
}

/// True for a jump that tests a flag of the point loop right before it.
bool StripFinder::IsReadRightAfter(std::size_t jump) const
{
    const SlcOperand& flag = m_flow[jump].flag;
    const SlcPointLoop* loop = m_loopTo[jump];
    return flag && loop &&
           std::find(loop->flags.begin(), loop->flags.end(), flag) != loop->flags.end();
}

/// Returns the end of the loop whose first label is at `begin`; `k_none` if there is no such loop.
/// Labels right after the last jump back belong to the loop.
std::size_t StripFinder::EndOf(std::size_t begin) const
{
    const SlcLabel& label = m_flow[begin].label;
    if (!label || m_labels.at(label).jumps.empty() || m_labels.at(label).jumps.back() < begin)
        return k_none;
    std::size_t end = m_labels.at(label).jumps.back() + 1;
    while (end < m_codes.size() && m_flow[end].label)
        ++end;
    return end;
}

bool StripFinder::CanRunByStrips(std::size_t begin, std::size_t end) const
{
    bool hasCondition = false;
    for (std::size_t i = begin; i < end;) {
        if (m_loopAt[i]) {
            i = m_loopAt[i]->end;
            continue;
        }
        if (!StaysInside(i, begin, end))
            return false;
        if (const SlcOperand& flag = m_flow[i].flag) {
            if (!IsReadRightAfter(i) || m_readsRightAfter.at(flag) != m_reads.Of(flag))
                return false;
            hasCondition = true;
        }
        ++i;
    }
    return hasCondition;
}

/// True for a jump to a target from `begin` up to `end`, and for a label whose jumps are all there.
bool StripFinder::StaysInside(std::size_t place, std::size_t begin, std::size_t end) const
{
    const auto isInside = [&](std::size_t other) { return begin <= other && other < end; };
    if (const SlcLabel& target = m_flow[place].target)
        return isInside(m_labels.at(target).place);
    if (const SlcLabel& label = m_flow[place].label) {
        const auto& jumps = m_labels.at(label).jumps;
        return std::all_of(jumps.begin(), jumps.end(), isInside);
    }
    return false;
}

}  // namespace

std::vector<SlcStripLoop> SlcFindStripLoops(const SlcListICode& list,
                                            const std::vector<SlcPointLoop>& loops)
{
    return StripFinder(list, loops).Find();
}
