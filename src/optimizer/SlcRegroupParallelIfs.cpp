// Joins adjacent guards of one class with the same flag.
//
//     if f A; x = 1; endif A; if f B; y = 1; endif B      if f A; x = 1; y = 1; endif A
//
// This pass runs after SlcRegroupParallelBlocks, which makes guards adjacent: the lowering opens a
// separate guard in each run. A body that writes the flag of its guard, or that ends in a `break`
// or `continue`, prevents the join. The rule for `break` and `continue` has no effect on lowered
// code, in which both clear the flag of their guard; only lists from other sources need it.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcRegroupParallelIfs, ...).

#include "optimizer/SlcRegroupParallelIfs.h"

#include <typeinfo>
#include <utility>

namespace {

/// Determines whether an instruction writes a given operand.
class WritesWalker : public SlcOperandWalker {
public:
    [[nodiscard]] bool Writes(const SlcPtr<SlcICode>& code, const SlcOperand& operand)
    {
        m_operand = operand;
        m_found = false;
        Visit(code);
        return m_found;
    }

private:
    void Read(SlcOperand&) override {}
    void Write(SlcOperand& operand) override { m_found |= operand == m_operand; }

    SlcOperand m_operand;
    bool m_found = false;
};

}  // namespace

void SlcRegroupParallelIfs::Optimize(SlcPtr<SlcListICode>& list)
{
    m_list = &*list;
    m_output.clear();
    m_open.clear();
    for (m_position = 0; m_position < list->m_icodes.size(); ++m_position)
        list->m_icodes[m_position]->ApplyWalker(this);
    list->m_icodes.swap(m_output);
}

void SlcRegroupParallelIfs::CloseAtMark(const SlcPtr<SlcICode>& mark)
{
    m_open.clear();
    m_lastWasJump = false;
    m_output.push_back(mark);
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcBeginParallelICode> code)
{
    CloseAtMark(code);
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcEndParallelICode> code)
{
    CloseAtMark(code);
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcIfICode> code)
{
    m_open.push_back({code, false});
    m_lastWasJump = false;
    m_output.push_back(code);
}

bool SlcRegroupParallelIfs::NextGuardJoins() const
{
    if (m_lastWasJump || m_open.empty() || m_open.back().flagWritten ||
        m_position + 1 >= m_list->m_icodes.size())
        return false;
    const SlcICode& next = *m_list->m_icodes[m_position + 1];
    const SlcIfICode& open = *m_open.back().code;
    return typeid(next) == typeid(open) &&
           static_cast<const SlcIfICode&>(next).m_flag == open.m_flag;
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcEndIfICode> code)
{
    if (NextGuardJoins()) {
        ++m_position;
        return;
    }
    const SlcLabel label = m_open.empty() ? code->m_label : m_open.back().code->m_label;
    m_output.push_back(MakeShared<SlcEndIfICode>(label));
    if (!m_open.empty())
        m_open.pop_back();
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcBreakICode> code)
{
    Default(code);
    m_lastWasJump = true;
}

void SlcRegroupParallelIfs::Case(SlcPtr<SlcContinueICode> code)
{
    Default(code);
    m_lastWasJump = true;
}

void SlcRegroupParallelIfs::Default(SlcPtr<SlcICode> code)
{
    m_lastWasJump = false;
    for (Guard& guard : m_open)
        if (!guard.flagWritten)
            guard.flagWritten = WritesWalker().Writes(code, guard.code->m_flag);
    m_output.push_back(std::move(code));
}
