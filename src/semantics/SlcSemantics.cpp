// The order of the checks. SlcCheckSemantics walks definitions and statements; each expression that
// it comes to goes through the passes before it walks on, since later code may depend on it:
//
//     1. SlcCalculateTypesSets     from the operands up: which types each part could have
//     2. SlcResolveUniqueType      from the whole down: which one it has, which overload is called
//     3. SlcCheckDetail            from the operands up: uniform, varying, or open in a function
//        SlcCheckInlineDetail      at a call: the body once more, with the details of this call
//     4. SlcCheckUsage             in the order of execution: reads of what nothing has set
//
// Each pass leaves its result in the annotation of the node (SlcPossibleTypes). A type that a
// report has been made for is the error type, which every later rule accepts in silence.

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
