// The rules for arguments that a call writes, common to built-ins, shadeops and user functions.
//
// Tested by tests/semantics/SlcCheckDetailTest.cpp.

#include "semantics/SlcArgumentChecks.h"

#include "frontend/SlcCallNodes.h"
#include "semantics/SlcInlineDetails.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncSymbolEntry.h"

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
    // With an index that is not uniform, points can write different elements, but all points share
    // the elements of a uniform array.
    if (variable && variable->GetDetail()->IsUniform() &&
        !SlcFirstDetailOf(argument)->IsUniform()) {
        errors.Error(argument,
                     "Argument " + number + " of function '" + function + "' cannot be uniform");
        return false;
    }
    return true;
}
