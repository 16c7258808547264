#pragma once

#include <cstddef>
#include <set>

#include "frontend/SlcCodeWalker.h"
#include "support/SlcPtr.h"

class SlcVarSymbolEntry;

/// Facts about the body of a function, including the functions that it calls.
struct SlcBodyFacts {
    /// True if the body accesses a variable of unknown detail that is neither a formal nor a local,
    /// so that its result depends on more than its arguments.
    bool accessesOuterVariables = false;
    /// True if the body accesses the light of a light loop around the call.
    bool needsLightLoop = false;
    /// The number of operations in one expansion of the body, including called functions. It is
    /// computed before any expansion, since it doubles at each link in a chain of functions that
    /// each call the previous one twice. Never overflows.
    std::size_t expandedOperations = 0;
};

/// Collects the facts of a function whose body has been checked. Linear in the body.
class SlcGetBodyFacts : public SlcCodeWalker {
public:
    /// `shaderType` is that of the file's shader. Called functions have been checked before.
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

    /// Adds operations; the sum stops at a limit that is larger than any permitted expansion.
    void AddOperations(std::size_t count);
    /// Records a read or write of the variable; null is ignored.
    void RecordAccess(const SlcPtr<SlcVarSymbolEntry>& variable);

    SlcBodyFacts m_facts;
    std::set<const SlcVarSymbolEntry*> m_own;  // formals and locals; not iterated: keyed by address
    bool m_isLightShader = false;
    bool m_inLightLoop = false;  // of the function itself
};
