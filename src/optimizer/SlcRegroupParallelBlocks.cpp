// Joins adjacent parallel runs into one loop over the points.
//
//     {; x = 1; }; {; y = 1; }; u = 1; {; z = 1; }      {; x = 1; y = 1; }; u = 1; {; z = 1; }
//
// The end of a run that may be joined with the next one is held back (m_endIsHeld) until the next
// instruction shows whether a run follows. Runs stay separate where the order of points could be
// observable: after a run with an order-sensitive call, since all points must execute the first of
// two such calls before any executes the second; and where one run writes a uniform variable that
// the other accesses (SlcUniformAccess). A run with a comparison is not joined with the next one.
// SlcRemoveEmptyBlocks has no such rule, so from -O2 on these runs are joined as well.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcRegroupParallelBlocks, ...).

#include "optimizer/SlcRegroupParallelBlocks.h"

#include <utility>

#include "icode/SlcBoolICode.h"
#include "icode/SlcCallICode.h"

void SlcRegroupParallelBlocks::Optimize(SlcPtr<SlcListICode>& list)
{
    m_endIsHeld = false;
    m_noJoin = false;
    m_output.clear();
    m_uniforms.emplace(list->m_icodes);
    m_runs = 0;
    for (const auto& code : list->m_icodes)
        code->ApplyWalker(this);
    if (m_endIsHeld)
        CloseRun();
    list->m_icodes.swap(m_output);
    m_uniforms.reset();
}

void SlcRegroupParallelBlocks::CloseRun()
{
    m_output.push_back(MakeShared<SlcEndParallelICode>(m_currentBegin->m_label));
}

void SlcRegroupParallelBlocks::Case(SlcPtr<SlcBeginParallelICode> code)
{
    const std::size_t run = m_runs++;
    if (!m_endIsHeld || !m_uniforms->Join(m_currentRun, run)) {
        if (m_endIsHeld)
            CloseRun();
        m_currentBegin = code;
        m_currentRun = run;
        m_output.push_back(code);
    }
    m_endIsHeld = false;
    m_noJoin = false;
}

void SlcRegroupParallelBlocks::Case(SlcPtr<SlcEndParallelICode>)
{
    if (m_noJoin)
        CloseRun();
    m_endIsHeld = !m_noJoin;
}

void SlcRegroupParallelBlocks::Case(SlcPtr<SlcCommentICode>)
{
    // Comments are dropped, so that they do not separate runs.
}

void SlcRegroupParallelBlocks::Case(SlcPtr<SlcCallICode> code)
{
    if (code->m_orderSensitive)
        m_noJoin = true;
    Default(code);
}

void SlcRegroupParallelBlocks::Case(SlcPtr<SlcBoolExprICode> code)
{
    m_noJoin = true;
    Default(code);
}

void SlcRegroupParallelBlocks::Default(SlcPtr<SlcICode> code)
{
    if (m_endIsHeld)
        CloseRun();
    m_output.push_back(std::move(code));
    m_endIsHeld = false;
}
