#include "semantics/SlcArgumentChecks.h"

#include "frontend/SlcExprNodes.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcSymbolEntry.h"

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
    const auto& variable = static_cast<const SlcReferenceExprNode*>(argument)->GetSymbolEntry();
    if (variable && variable->GetStorage()->IsInput()) {
        errors.Error(argument, "Read-only formal passed as argument " + number +
                                   " to the function '" + function +
                                   "' cannot be used as an output parameter of this function.");
        return false;
    }
    return true;
}
