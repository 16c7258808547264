// Lists the parts of a variable tail in the order of its card. The instruction of the built-in has
// the values of the tail in this order, although a call in the source may name them in any order.
//
// Tested by tests/symbols/SlcFuncVarArgExprTest.cpp; the resulting calls are tested by
// tests/lowering.

#include "symbols/SlcFuncTail.h"

namespace {

void Collect(SlcFuncVarArgExpr* part, std::vector<SlcFuncVarArgSingle*>& values,
             std::vector<SlcFuncVarArgPair*>& pairs)
{
    if (auto* single = dynamic_cast<SlcFuncVarArgSingle*>(part)) {
        values.push_back(single);
    } else if (auto* pair = dynamic_cast<SlcFuncVarArgPair*>(part)) {
        values.push_back(pair->GetValue());
        pairs.push_back(pair);
    } else if (auto* list = dynamic_cast<SlcFuncVarArgList*>(part)) {
        for (const auto& member : list->GetParts())
            Collect(member.get(), values, pairs);
    }
}

}  // namespace

std::vector<SlcFuncVarArgPair*> SlcTailPairs(SlcFuncVarArgExpr* tail)
{
    std::vector<SlcFuncVarArgSingle*> values;
    std::vector<SlcFuncVarArgPair*> pairs;
    Collect(tail, values, pairs);
    return pairs;
}

std::vector<SlcFuncVarArgSingle*> SlcTailValues(SlcFuncVarArgExpr* tail)
{
    std::vector<SlcFuncVarArgSingle*> values;
    std::vector<SlcFuncVarArgPair*> pairs;
    Collect(tail, values, pairs);
    return values;
}

SlcFuncVarArgSingle* SlcTailValueAt(SlcFuncVarArgExpr* tail, std::size_t position)
{
    if (auto* single = dynamic_cast<SlcFuncVarArgSingle*>(tail))
        return position == 0 || single->IsRepeated() ? single : nullptr;
    const auto values = SlcTailValues(tail);
    if (position < values.size())
        return values[position];
    return !values.empty() && values.back()->IsRepeated() ? values.back() : nullptr;
}
