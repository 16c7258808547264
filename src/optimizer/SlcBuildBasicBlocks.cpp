// A block begins before each instruction that can be jumped to (the trait BeginsBlock) and ends
// after each one that can jump (EndsBlock).
//
//     x = 1; if f L; y = 1; endif L; z = 1     becomes  [x = 1; if f L] [y = 1] [endif L; z = 1]
//
// The brackets of parallel runs neither begin nor end a block, since all points execute them alike.
// The head of a light loop is a block by itself, since the end of the loop jumps to it, and the
// head may jump past the loop.
//
// Tested by tests/optimizer/OptimizerTest.cpp, TEST(SlcControlFlowGraph, ...).

#include "optimizer/SlcBuildBasicBlocks.h"

#include "icode/SlcICode.h"

std::vector<SlcBasicBlock>
SlcBuildBasicBlocks::BuildBlocks(std::span<const SlcPtr<SlcICode>> codes) const
{
    std::vector<SlcBasicBlock> blocks;
    std::size_t begin = 0;
    const auto endBlock = [&](std::size_t end) {
        if (begin == end)
            return;
        blocks.emplace_back(static_cast<int>(blocks.size()), codes.subspan(begin, end - begin));
        begin = end;
    };
    for (std::size_t i = 0; i < codes.size(); ++i) {
        using namespace SlcICodeTraits;
        if (!codes[i]->Is(BeginsBlock | EndsBlock))
            continue;
        if (codes[i]->Is(BeginsBlock))
            endBlock(i);
        if (codes[i]->Is(EndsBlock))
            endBlock(i + 1);
    }
    endBlock(codes.size());
    return blocks;
}
