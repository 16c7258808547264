// A block begins in front of whatever can be jumped to (the trait BeginsBlock) and ends behind
// whatever can jump (EndsBlock).
//
//     x = 1; if f L; y = 1; endif L; z = 1     gives    [x = 1; if f L] [y = 1] [endif L; z = 1]
//
// The brackets of parallel runs do neither: all points take the same way through them. The head of
// a light loop does both, since its back edge comes to it and it may go past the loop.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcControlFlowGraph, ...).

#include "optimizer/SlcBuildBasicBlocks.h"

#include <utility>

#include "icode/SlcICode.h"

std::vector<SlcBasicBlock> SlcBuildBasicBlocks::BuildBlocks(const SlcListICode& list) const
{
    std::vector<SlcBasicBlock> blocks;
    SlcBasicBlock current(0);
    const auto endBlock = [&] {
        if (current.IsEmpty())
            return;
        blocks.push_back(std::move(current));
        current = SlcBasicBlock(static_cast<int>(blocks.size()));
    };
    for (const auto& code : list.m_icodes) {
        if (code->Is(SlcICodeTraits::BeginsBlock))
            endBlock();
        current.AddICode(code);
        if (code->Is(SlcICodeTraits::EndsBlock))
            endBlock();
    }
    endBlock();
    return blocks;
}
