// What a declaration says of the arguments of a call, and the rules for an argument that is
// written.
//
// The arguments behind the fixed ones belong to a tail, whose leaf for each has been stored by the
// choice of the overload; a call that was refused has none, and the list ends there.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcArgumentChecks.h"

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcInlineDetails.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

/// The row of `unpack` calls them inputs, though it writes them.
bool IsUnpackResult(const SlcFuncSymbolEntry& entry, std::size_t position)
{
    return position > 0 && entry.GetOrigin() == SlcFuncOrigin::BuiltIn &&
           entry.GetName() == "unpack";
}

}  // namespace

std::vector<SlcDeclaredArgument> SlcDeclaredArguments(SlcFuncSymbolEntry& entry,
                                                      SlcProcCallExprNode* call)
{
    const auto& arguments = call->GetArguments()->GetArgs();
    const std::size_t fixed = entry.GetArgTypes().size();
    std::vector<SlcDeclaredArgument> declared;
    declared.reserve(arguments.size());
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        SlcExprNode* argument = arguments[i].get();
        if (i < fixed) {
            SlcStorageSpecNode* storage = IsUnpackResult(entry, i) ? SlcStorageSpecNode::AOutput()
                                                                   : entry.GetArgStorages()[i];
            declared.push_back({argument, entry.GetArgDetails()[i], storage});
            continue;
        }
        const SlcFuncVarArgLeaf* leaf = call->GetTailLeaves()[i - fixed];
        if (!leaf)
            break;
        declared.push_back({argument, leaf->GetDetail(), leaf->GetStorage()});
    }
    return declared;
}

bool SlcCheckOutputArgument(SlcSemanticError& errors, const SlcExprNode* argument,
                            std::size_t position, const std::string& function)
{
    const std::string number = std::to_string(position);
    if (!argument->IsReferenceExpr()) {
        errors.Error(argument, "Argument " + number + " of " + function +
                                   " must be a variable of a reference to an array. "
                                   "Formal is declared 'output'");
        return false;
    }
    const auto& named = static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry();
    const SlcPtr<SlcVarSymbolEntry> variable = SlcOutermost(named);
    if (variable && variable->GetStorage()->IsInput()) {
        errors.Error(argument, "Read-only formal passed as argument " + number +
                                   " to the function '" + function +
                                   "' cannot be used as an output parameter of this function.");
        return false;
    }
    // At a varying index each point has its own element to write; a uniform array has one for all.
    if (variable && variable->GetDetail()->IsUniform() &&
        !SlcFirstDetailOf(argument)->IsUniform()) {
        errors.Error(argument,
                     "Argument " + number + " of function '" + function + "' cannot be uniform");
        return false;
    }
    return true;
}
