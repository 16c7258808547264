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
    check(tree, global, global, nullptr, nullptr);
    if (!errors->NoError())
        throw SlcCompilationError();
}
