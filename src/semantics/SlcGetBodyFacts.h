#pragma once

#include <cstddef>
#include <set>

#include "frontend/SlcCodeWalker.h"
#include "support/SlcPtr.h"

class SlcVarSymbolEntry;

/// Facts about the body of a function, including the functions that it calls.
struct SlcBodyFacts {
    /// True if this function, or one that it calls, accesses a variable of unknown detail that is
    /// neither a formal nor a local of the accessing function, so that the result may depend on
    /// more than the arguments.
    bool accessesOuterVariables = false;
    /// True if `L`, `Cl` or `Ol` is accessed outside of all `illuminance` statements in this
    /// function and those that it calls, so that the call must be inside one. Always false in light
    /// shaders, where these variables are predefined everywhere.
    bool needsLightLoop = false;
    /// The number of assignments, binary arithmetic operators and calls in one expansion of the
    /// body, including called functions. A chain of functions that each call the previous one twice
    /// doubles it at each link, so the lowering rejects too large a number before it expands calls.
    std::size_t expandedOperations = 0;
};

/// Collects the facts of a function whose body has been checked. Visits each node of the body once,
/// except for nested functions, and does not visit the bodies of called functions.
class SlcGetBodyFacts : public SlcCodeWalker {
public:
    /// Returns the facts of `function`. `shaderType` is that of the file's shader, not null. The
    /// facts of called functions must have been stored in their symbol entries.
    [[nodiscard]] SlcBodyFacts operator()(SlcFuncDefNode* function, SlcShaderTypeNode* shaderType);

private:
    using SlcCodeWalker::Case;
    void Case(SlcFuncDefStmtNode* node) override;
    void Case(SlcDefExprNode* node) override;
    void Case(SlcIlluminanceStmtNode* node) override;
    void Case(SlcBinOpExprNode* node) override;
    void Case(SlcAssignExprNode* node) override;
    void Case(SlcIdentExprNode* node) override;
    void Case(SlcArrayRefExprNode* node) override;
    void Case(SlcLValueNode* node) override;
    void Case(SlcProcCallExprNode* node) override;
    void Default(SlcSyntaxNode* node) override;

    /// Adds operations; the sum stops at half the range of the type, so that it cannot overflow.
    void AddOperations(std::size_t count);
    /// Records a read or write of the variable; null is ignored.
    void RecordAccess(const SlcPtr<SlcVarSymbolEntry>& variable);

    SlcBodyFacts m_facts;
    std::set<const SlcVarSymbolEntry*> m_own;  // formals and locals; not iterated: keyed by address
    bool m_isLightShader = false;
    bool m_inLightLoop = false;  // in an `illuminance` statement of the function itself
};
