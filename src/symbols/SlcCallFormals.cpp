// Computes what a function requires of an argument of a checked call: for semantic analysis and
// lowering, of a call in the tree; for intermediate code and its passes, of an instruction.
//
//     occlusion(P, N, "bias", 2)             in the source: P, N, a name, a value
//     CALL_PRIM_OCCLUSION P N 0 -1 2 ...     in the code: each value of the variable tail in a
//                                            fixed position
//
// Tested by tests/symbols/SlcCallFormalsTest.cpp.

#include "symbols/SlcCallFormals.h"

#include "frontend/SlcCallNodes.h"
#include "symbols/SlcFuncSymbolEntry.h"
#include "symbols/SlcFuncTail.h"

namespace {

/// True for an argument that `unpack` writes: all except the first. Its card declares all as
/// inputs, so these outputs must be recognized here.
bool IsUnpackResult(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    return position >= 1 && entry.GetPrimitive() == SqxPrimitive::CALL_PRIM_UNPACK;
}

SlcCallFormal FixedFormal(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    return {entry.GetArgTypes()[position], entry.GetArgDetails()[position],
            entry.GetArgStorages()[position]->IsOutput() || IsUnpackResult(entry, position)};
}

SlcCallFormal FormalOf(SlcFuncVarArgLeaf* leaf)
{
    if (auto* value = dynamic_cast<SlcFuncVarArgSingle*>(leaf))
        return {value->GetType(), value->GetDetail(), value->GetStorage()->IsOutput(), value};
    // The leaf is the name of a pair, or null if only the function itself can check the argument.
    return {SlcTypeNode::AAnyType(), leaf ? leaf->GetDetail() : SlcDetailNode::AUnknown(), false};
}

}  // namespace

std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call)
{
    const SlcFuncSymbolEntry& entry = *call.GetSymbolEntry();
    const std::size_t arguments = call.GetArguments()->GetArgs().size();
    std::vector<SlcCallFormal> formals;
    formals.reserve(arguments);
    for (std::size_t i = 0; i < entry.GetArgTypes().size() && i < arguments; ++i)
        formals.push_back(FixedFormal(entry, i));
    for (SlcFuncVarArgLeaf* leaf : call.GetTailLeaves())
        formals.push_back(FormalOf(leaf));
    return formals;
}

SlcCallFormal SlcFormalAt(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    const std::size_t fixed = entry.GetArgTypes().size();
    if (position < fixed)
        return FixedFormal(entry, position);
    SlcFuncVarArgExpr* tail = entry.GetTail();
    return FormalOf(tail ? SlcTailValueAt(tail, position - fixed) : nullptr);
}
