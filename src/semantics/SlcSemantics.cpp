// The order of the checks. SlcCheckSemantics walks definitions and statements. It runs all passes
// on each expression before it continues, since later code may depend on the results:
//
//     1. SlcCalculateTypesSets     from the operands up: which types each part could have
//     2. SlcResolveUniqueType      from the whole down: which one it has, which overload is called
//     3. SlcCheckDetail            from the operands up: uniform, varying, or open in a function
//        SlcCheckInlineDetail      at the call of a user function: its body, with the details of
//                                  this call
//     4. SlcCheckUsage             in the order of execution: reads of unset variables; only if
//                                  warnings are enabled
//
// The first three store their results in the annotations of the nodes (SlcPossibleTypes, and for
// the targets of assignments SlcLValueType), and the overload in the call. A reported expression
// gets a type that later rules accept without a report, in most cases the error type.

#include "semantics/SlcSemantics.h"

#include "frontend/SlcSyntaxNode.h"
#include "semantics/SlcBuiltInDetailRules.h"
#include "semantics/SlcCheckSemantics.h"
#include "semantics/SlcCheckUsage.h"
#include "support/SlcDiagnostics.h"
#include "symbols/SlcBuiltInTable.h"
#include "symbols/SlcShaderSymbolTable.h"

void SlcSemantics(SlcSyntaxNode* tree, SlcOptionsControl& options)
{
    SlcShaderSymbolTable::ResetStatics();
    const SlcPtr<SlcSymbolTable> global = SlcBuiltInTable(SlcBuiltInDetailRules());
    const auto errors = MakeShared<SlcSemanticError>();
    SlcCheckUsage usage(errors);
    SlcCheckSemantics check(errors, options, WarningLevel() > 0 ? &usage : nullptr);
    check(tree, {.global = global, .current = global, .shader = nullptr, .illuminance = nullptr});
    if (!errors->NoError())
        throw SlcCompilationError();
}
