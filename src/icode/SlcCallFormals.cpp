#include "icode/SlcCallFormals.h"

#include "symbols/SlcFuncTail.h"

namespace {

/// `unpack` writes into its last four arguments, though its row declares no output.
bool IsUnpackResult(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    return position >= 1 && entry.GetCName() && entry.GetCName()->GetName() == "CALL_PRIM_UNPACK";
}

SlcCallFormal FormalOf(SlcFuncVarArgLeaf* leaf)
{
    if (auto* value = dynamic_cast<SlcFuncVarArgSingle*>(leaf))
        return {value->GetType(), value->GetStorage()->IsOutput(), value};
    // The name of a pair, or what only the function itself can judge.
    return {SlcTypeNode::AAnyType(), false, nullptr};
}

}  // namespace

std::vector<SlcCallFormal> SlcFormalsOf(const SlcProcCallExprNode& call)
{
    SlcFuncSymbolEntry& entry = *call.GetSymbolEntry();
    const auto& types = entry.GetArgTypes();
    const auto& arguments = call.GetArguments()->GetArgs();
    std::vector<SlcCallFormal> formals;
    formals.reserve(arguments.size());
    for (std::size_t i = 0; i < types.size() && i < arguments.size(); ++i)
        formals.push_back(
            {types[i], entry.GetArgStorages()[i]->IsOutput() || IsUnpackResult(entry, i)});

    for (SlcFuncVarArgLeaf* leaf : call.GetTailLeaves())
        formals.push_back(FormalOf(leaf));
    return formals;
}
