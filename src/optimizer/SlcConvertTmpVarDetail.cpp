#include "optimizer/SlcConvertTmpVarDetail.h"

#include <algorithm>

#include "icode/SlcBlockICode.h"
#include "optimizer/SlcDataflowAnalysis.h"

namespace {

using Codes = std::vector<SlcPtr<SlcICode>>;

template <class Mark>
bool IsMark(const SlcPtr<SlcICode>& code)
{
    return dynamic_cast<const Mark*>(&*code) != nullptr;
}

void MakeDefsVarying(const SlcPtr<SlcICode>& code, SlcDataflowAnalysis& analysis)
{
    analysis.DefUse().Compute(code);
    for (const int number : analysis.DefUse().Defs()) {
        const SlcOperand& variable = analysis.Variables().Variable(number);
        const SlcDetailNode* detail = variable->GetDetail();
        if (variable->GetStorage()->IsLocal() &&
            (detail->IsUnknownDetail() || detail->IsTempUniform()))
            variable->SetDetail(SlcDetailNode::AVarying());
    }
}

}  // namespace

void SlcConvertTmpVarDetail(const SlcControlFlowGraph& graph, SlcDataflowAnalysis& analysis)
{
    for (const auto& block : graph.Blocks()) {
        const Codes& codes = block.GetListICode();
        for (auto code = codes.begin(); code != codes.end(); ++code) {
            if (!IsMark<SlcBeginParallelICode>(*code)) {
                MakeDefsVarying(*code, analysis);
                continue;
            }
            const auto end = std::find_if(code, codes.end(), IsMark<SlcEndParallelICode>);
            if (end != codes.end())
                code = end;
        }
    }
}
