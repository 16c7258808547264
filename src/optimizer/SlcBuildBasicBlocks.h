#pragma once

#include <vector>

#include "icode/SlcAllICodeWalker.h"
#include "icode/SlcListICode.h"
#include "optimizer/SlcBasicBlock.h"

/// Cuts a list into basic blocks without edges.
class SlcBuildBasicBlocks : public SlcAllICodeWalker {
public:
    /// Blocks in code order, none of them empty; ids are positions.
    [[nodiscard]] std::vector<SlcBasicBlock> BuildBlocks(const SlcListICode& list);

private:
    using SlcAllICodeWalker::Case;
    void Case(SlcPtr<SlcLabelICode> code) override;
    void Case(SlcPtr<SlcEndIfICode> code) override;
    void Case(SlcPtr<SlcBeginIlluminanceICode> code) override;
    void Case(SlcPtr<SlcGotoICode> code) override;
    void Case(SlcPtr<SlcIfICode> code) override;
    void Case(SlcPtr<SlcEndIlluminanceICode> code) override;
    void Case(SlcPtr<SlcCommentICode> code) override;
    void Default(SlcPtr<SlcICode> code) override;

    void BeginNewBlock();
    void EndCurrentBlock();

    std::vector<SlcBasicBlock> m_blocks;
    SlcBasicBlock m_current{0};
};
