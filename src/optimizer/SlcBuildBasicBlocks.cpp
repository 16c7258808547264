// A block begins in front of whatever can be jumped to and ends behind whatever can jump.
//
//     x = 1; if f L; y = 1; endif L; z = 1     gives    [x = 1; if f L] [y = 1] [endif L; z = 1]
//
// The brackets of parallel runs do neither: all points take the same way through them. The head of
// a light loop does both, since its back edge comes to it and it may go past the loop.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcControlFlowGraph, ...).

#include "optimizer/SlcBuildBasicBlocks.h"

#include <string>
#include <utility>

#include "icode/SlcICodeName.h"
#include "icode/SlcICodes.h"
#include "support/SlcDiagnostics.h"

std::vector<SlcBasicBlock> SlcBuildBasicBlocks::BuildBlocks(const SlcListICode& list)
{
    m_blocks.clear();
    m_current = SlcBasicBlock(0);
    for (const auto& code : list.m_icodes)
        code->ApplyWalker(this);
    BeginNewBlock();
    return std::move(m_blocks);
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcLabelICode> code)
{
    BeginNewBlock();
    m_current.AddICode(code);
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcEndIfICode> code)
{
    BeginNewBlock();
    m_current.AddICode(code);
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcBeginIlluminanceICode> code)
{
    BeginNewBlock();
    m_current.AddICode(code);
    EndCurrentBlock();
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcGotoICode> code)
{
    m_current.AddICode(code);
    EndCurrentBlock();
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcIfICode> code)
{
    m_current.AddICode(code);
    EndCurrentBlock();
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcEndIlluminanceICode> code)
{
    m_current.AddICode(code);
    EndCurrentBlock();
}

void SlcBuildBasicBlocks::Case(SlcPtr<SlcCommentICode> code)
{
    FatalError(std::string("Do not yet build basic block for ").append(SlcICodeName(*code)));
}

void SlcBuildBasicBlocks::Default(SlcPtr<SlcICode> code)
{
    m_current.AddICode(std::move(code));
}

void SlcBuildBasicBlocks::BeginNewBlock()
{
    if (!m_current.IsEmpty())
        EndCurrentBlock();
}

void SlcBuildBasicBlocks::EndCurrentBlock()
{
    m_blocks.push_back(std::move(m_current));
    m_current = SlcBasicBlock(static_cast<int>(m_blocks.size()));
}
